// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

/// What the module of a plug-in bundle exports: the class-wide operations of one plug-in class.
///
/// A module is a Qt plug-in whose root object derives from QObject and from this class:
///
///     class CommandDaemonFactory : public QObject, public WDPlugInFactory {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
///         Q_INTERFACES(WDPlugInFactory)
///     public:
///         std::unique_ptr<WDPlugIn> make() override { return std::make_unique<CommandDaemonPlugIn>(); }
///     };
///
/// The bundle's Info dictionary names the module of each role: "WDDaemonModule", "WDUserAgentModule",
/// "WDPrefPaneModule" (file names below Contents/Linux; dozely::InfoKey). A module that serves several roles
/// overrides makeForRole.
///
/// An action that goes on after actInDaemon or actInUserAgent returned: the plug-in class declares the
/// invokable `bool isActing()` and the signal `actionDidFinish()`. The host keeps the object until isActing
/// answers false, and asks again at each actionDidFinish.
class DOZELYKIT_EXPORT WDPlugInFactory
{
public:
    virtual ~WDPlugInFactory();

    /// Called once for each loaded class with its bundle, before instances are made; false refuses to work.
    virtual bool initializeClass(const std::shared_ptr<NSBundle> &bundle);

    /// Called when the host is done with the class.
    virtual void terminateClass();

    /// A new instance; its bundle is set by the host.
    virtual std::unique_ptr<WDPlugIn> make() = 0;

    /// A new instance for the role named by its Info key; make() unless overridden.
    virtual std::unique_ptr<WDPlugIn> makeForRole(const QString &roleKey);
};

#define WDPlugInFactory_iid "com.dozely.WDPlugInFactory/1"
Q_DECLARE_INTERFACE(WDPlugInFactory, WDPlugInFactory_iid)
