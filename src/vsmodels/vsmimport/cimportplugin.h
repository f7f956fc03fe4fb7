// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vsplugin/cabstractplugin.h"

namespace Vesk {

/// The module's root object, which hosts get from the plug-in loader. Its work is done through
/// CImportContext and CImportModel.
class CImportPlugin : public CAbstractPlugin
{
    Q_OBJECT
#if QT_VERSION >= 0x050000
    Q_PLUGIN_METADATA(IID "Vesk.CImportPlugin")
#endif

public:
    explicit CImportPlugin(QObject* parent = 0);
    virtual ~CImportPlugin();

    /// Makes the CImportContext. Always true; the arguments are ignored.
    bool initialize(QObject* host, const QVariantMap& settings) override;
    bool start() override;

private:
    Q_DISABLE_COPY(CImportPlugin)
};

} // namespace Vesk
