// SPDX-License-Identifier: MIT
// settings_probe BUNDLE FIELD TEXT: lends the configuration view of a plug-in, as a configuration interface
// does, and writes TEXT into the view's field FIELD. Prints the plug-in's name, what its action is by
// default, what the field shows then, and what the action is afterwards; ends with 1 where there is no such
// view or field.
#include <DozelyKit/plugin/Names.h>
#include <DozelyKit/plugin/WDPlugIn.h>
#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <QApplication>
#include <QLineEdit>

#include <cstdio>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (argc != 4)
        return 2;
    const QString roleKey = dozely::InfoKey::prefPaneModule;
    const auto bundle = NSBundle::bundleWithPath(argv[1]);
    const auto module =
        bundle->loadModule(bundle->objectForInfoDictionaryKey(roleKey).toString(), WDPlugInFactory_iid);
    auto *const factory = module ? qobject_cast<WDPlugInFactory *>(*module) : nullptr;
    if (!factory || !factory->initializeClass(bundle))
        return 1;
    const std::shared_ptr<WDPlugIn> made = factory->makeForRole(roleKey);
    const auto plugIn = std::dynamic_pointer_cast<WDPrefPanePlugIn>(made);
    if (!plugIn)
        return 1;
    plugIn->setBundle(bundle);
    plugIn->loadNib();
    auto *const field = plugIn->setupView() ? plugIn->setupView()->findChild<QLineEdit *>(argv[2]) : nullptr;
    if (!field)
        return 1;
    plugIn->setParameters(plugIn->defaultParameters());
    plugIn->fillSetupInterfaceFromParameters();
    std::printf("%s\n%s\n%s\n", qPrintable(plugIn->pluginName()), qPrintable(plugIn->actionString()),
                qPrintable(field->text()));
    field->setText(argv[3]);
    plugIn->fillParametersFromSetupInterface();
    std::printf("%s\n", qPrintable(plugIn->actionString()));
    return 0;
}
