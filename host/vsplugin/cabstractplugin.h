// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vsplugin/vspluginglobal.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

namespace Vesk {

/// Base of the root object of every plug-in. The order of the virtual operations is fixed.
///
/// A host calls initialize() and then start(), once each, on its own thread, and is done: stop()
/// and finalize() are for frameworks that end their plug-ins one by one, and do nothing in the
/// import module. The plug-in loader owns the object.
class VSPLUGIN_EXPORT CAbstractPlugin : public QObject
{
    Q_OBJECT

public:
    /// Plug-ins are made by the loader, without parent.
    explicit CAbstractPlugin(QObject* parent = 0);
    virtual ~CAbstractPlugin();

    /// Whether the plug-in is an application of its own rather than a service. Always false here.
    bool isAppPlugin();

    /// Called once after loading. `host` is the host's root object or null, `settings` whatever the
    /// host wants to pass. False means that the plug-in cannot be used.
    virtual bool initialize(QObject* host, const QVariantMap& settings);

    /// Called once all plug-ins are initialized. False means that the plug-in cannot be used.
    virtual bool start();

protected:
    /// The counterpart of start(). For the framework.
    virtual void stop();
    /// The counterpart of initialize(). For the framework.
    virtual void finalize();

private:
    Q_DISABLE_COPY(CAbstractPlugin)
};

} // namespace Vesk
