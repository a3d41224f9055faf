// SPDX-License-Identifier: MIT
#include "hosts/application/actions/ConfigurationSide.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QMetaProperty>
#include <QScopedValueRollback>
#include <QWidget>

using namespace dozely;

ConfigurationSide::ConfigurationSide(PlugInLoader &loader, std::shared_ptr<NSBundle> bundle)
    : m_loader(loader), m_bundle(std::move(bundle))
{
    m_edited.setSingleShot(true);
    connect(&m_edited, &QTimer::timeout, this, &ConfigurationSide::edited);
}

ConfigurationSide::~ConfigurationSide()
{
    m_plugIn.reset(); // its view with it
}

Result<std::unique_ptr<ConfigurationSide>> ConfigurationSide::make(PlugInLoader &loader, const QString &path)
{
    const auto bundle = loader.bundle(path);
    if (!bundle)
        return bundle.error();
    std::unique_ptr<ConfigurationSide> side(new ConfigurationSide(loader, *bundle));
    const auto plugIn = side->newPlugIn();
    if (!plugIn)
        return plugIn.error();
    side->m_plugIn = *plugIn;
    return side;
}

Result<std::shared_ptr<WDPrefPanePlugIn>> ConfigurationSide::newPlugIn()
{
    const auto made = m_loader.make(m_bundle);
    if (!made)
        return made.error();
    const auto plugIn = std::dynamic_pointer_cast<WDPrefPanePlugIn>(*made);
    if (!plugIn)
        return Error{
            QString("The plug-in of %1 is none for configuration").arg(logLabel(m_bundle->bundlePath()))};
    plugIn->setProperty(PlugInProperty::hostHasUsualOptions, true);
    return plugIn;
}

Result<void> ConfigurationSide::guarded(const std::function<void()> &operation)
{
    if (!m_failure.isEmpty())
        return Error{m_failure};
    if (const auto thrown = GuardedPosting::guardPlugIn(operation))
        giveUp(*thrown);
    return m_failure.isEmpty() ? Result<void>() : Error{m_failure};
}

void ConfigurationSide::giveUp(const QString &why)
{
    if (!m_failure.isEmpty())
        return;
    m_failure = why;
    m_edited.stop();
    ZDRLog("The configuration side of %@ is not used any more: %@", logLabel(m_bundle->bundlePath()), why);
}

Result<QWidget *> ConfigurationSide::view()
{
    QWidget *view = nullptr;
    const auto done = guarded([&] {
        if (!m_isLoaded) {
            m_isLoaded = true;
            m_plugIn->loadNib();
            if (QWidget *const loaded = m_plugIn->setupView())
                follow(loaded);
        }
        view = m_plugIn->setupView();
    });
    if (!done)
        return done.error();
    if (!view)
        return Error{QString("%1 has no view").arg(logLabel(m_bundle->bundlePath().section('/', -1)))};
    return view;
}

Result<void> ConfigurationSide::show(const QVariantMap &parameters)
{
    const QScopedValueRollback filling(m_isFilling, true);
    return guarded([&] {
        m_plugIn->setParameters(parameters);
        m_plugIn->fillSetupInterfaceFromParameters();
    });
}

Result<QVariantMap> ConfigurationSide::read()
{
    QVariantMap parameters;
    const QScopedValueRollback filling(m_isFilling, true);
    const auto done = guarded([&] {
        m_plugIn->fillParametersFromSetupInterface();
        if (const auto own = m_plugIn->parameters())
            parameters = *own;
    });
    return done ? Result(parameters) : done.error();
}

Result<QVariantMap> ConfigurationSide::defaults()
{
    QVariantMap parameters;
    const auto done = guarded([&] {
        parameters = m_plugIn->defaultParameters();
        if (m_plugIn->needsWakeUpByDefault())
            parameters.insert(ParameterKey::needsWakeUp, 1);
        if (m_plugIn->needsStartupByDefault())
            parameters.insert(ParameterKey::needsStartup, 1);
    });
    return done ? Result(parameters) : done.error();
}

Result<QString> ConfigurationSide::describe(const QVariantMap &parameters)
{
    if (!m_describer) {
        const auto made = newPlugIn();
        if (!made)
            return made.error();
        m_describer = *made;
    }
    QString description;
    const auto done = guarded([&] {
        m_describer->setParameters(parameters);
        description = m_describer->actionString();
    });
    return done ? Result(description) : done.error();
}

void ConfigurationSide::follow(QWidget *view)
{
    followOne(view);
    for (auto *const child : view->findChildren<QWidget *>())
        followOne(child);
}

void ConfigurationSide::followOne(QWidget *widget)
{
    // The contract has no signal for "edited". What a widget is there to edit is its user property, which
    // tells of changes, whoever made them: pointer, keys, a screen reader.
    const QMetaProperty edited = widget->metaObject()->userProperty();
    if (edited.hasNotifySignal()) {
        const int slot = metaObject()->indexOfMethod("noteEdit()");
        connect(widget, edited.notifySignal(), this, metaObject()->method(slot));
    }
    if (auto *const button = qobject_cast<QAbstractButton *>(widget))
        connect(button, &QAbstractButton::clicked, this, &ConfigurationSide::noteEdit);
    auto *const list = qobject_cast<QAbstractItemView *>(widget);
    if (list && list->model()) {
        connect(list->model(), &QAbstractItemModel::dataChanged, this, &ConfigurationSide::noteEdit);
        connect(list->model(), &QAbstractItemModel::rowsInserted, this, &ConfigurationSide::noteEdit);
        connect(list->model(), &QAbstractItemModel::rowsRemoved, this, &ConfigurationSide::noteEdit);
        connect(list->model(), &QAbstractItemModel::rowsMoved, this, &ConfigurationSide::noteEdit);
    }
}

void ConfigurationSide::noteEdit()
{
    if (!m_isFilling && m_failure.isEmpty())
        m_edited.start(0);
}
