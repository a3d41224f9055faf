// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "support/PrivateBus.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QLabel>
#include <QWidget>

#include <gmock/gmock.h>

/// The configuration sides of bundles, as built, on buses of the test's own.
class SideFixture : public testing::Test
{
protected:
    SideFixture()
    {
        dozely::UserLanguages::set({"en"});
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8()); // one bus is both
    }
    /// Loads the side of a bundle, with its view.
    void load(const QString &name)
    {
        plugIn.reset();
        bundle = NSBundle::bundleWithPath(QString(PLUG_INS "/%1.plugin").arg(name));
        ASSERT_TRUE(bundle);
        const QString module = bundle->objectForInfoDictionaryKey("WDPrefPaneModule").toString();
        const auto root = bundle->loadModule(module, WDPlugInFactory_iid);
        ASSERT_TRUE(root) << qPrintable(root.error().text);
        const std::shared_ptr<WDPlugIn> made =
            qobject_cast<WDPlugInFactory *>(*root)->makeForRole("WDPrefPaneModule");
        plugIn = std::dynamic_pointer_cast<WDPrefPanePlugIn>(made);
        ASSERT_TRUE(plugIn);
        plugIn->setBundle(bundle);
        plugIn->setProperty("hostHasUsualOptions", hostHasUsualOptions);
        plugIn->loadNib();
        ASSERT_TRUE(plugIn->setupView());
    }
    template<class Widget>
    Widget *find(const QString &name)
    {
        return plugIn->setupView()->findChild<Widget *>(name);
    }
    void fill(const QVariantMap &parameters)
    {
        plugIn->setParameters(parameters);
        plugIn->fillSetupInterfaceFromParameters();
    }
    QVariantMap read()
    {
        plugIn->fillParametersFromSetupInterface();
        return *plugIn->parameters();
    }
    /// What the view says that is missing here; empty when it says nothing.
    QString remark()
    {
        const auto *const label = find<QLabel>("remark");
        return label && !label->parentWidget()->isHidden() ? label->text() : QString();
    }
    void expectRemark(const QString &sentence)
    {
        EXPECT_TRUE(waitUntil([&] { return remark() == sentence; })) << qPrintable(remark());
    }

    ScratchRoot root;
    PrivateBus bus;
    bool hostHasUsualOptions = true;
    std::shared_ptr<NSBundle> bundle;
    std::shared_ptr<WDPrefPanePlugIn> plugIn;
};
