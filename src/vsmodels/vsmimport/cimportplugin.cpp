// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportplugin.h"

#include "cimportcontext.h"
#include "vspbased/veskqt.h"

namespace Vesk {

CImportPlugin::CImportPlugin(QObject* parent)
    : CAbstractPlugin(parent)
{}

CImportPlugin::~CImportPlugin() {}

bool CImportPlugin::initialize(QObject*, const QVariantMap&)
{
    return CImportContext::instance() != 0;
}

bool CImportPlugin::start()
{
    return true;
}

} // namespace Vesk

VESK_EXPORT_PLUGIN(vspimport, Vesk::CImportPlugin)
