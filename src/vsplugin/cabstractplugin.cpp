// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vsplugin/cabstractplugin.h"

namespace Vesk {

CAbstractPlugin::CAbstractPlugin(QObject* parent)
    : QObject(parent)
{}

CAbstractPlugin::~CAbstractPlugin() {}

bool CAbstractPlugin::isAppPlugin()
{
    return false;
}

bool CAbstractPlugin::initialize(QObject*, const QVariantMap&)
{
    return true;
}

bool CAbstractPlugin::start()
{
    return true;
}

void CAbstractPlugin::stop() {}

void CAbstractPlugin::finalize() {}

} // namespace Vesk
