// SPDX-License-Identifier: MIT
#include "hosts/application/actions/ActionSides.h"

#include "DozelyKit/plugin/Names.h"

#include <QWidget>

using namespace dozely;

ActionSides::ActionSides(PlugInTrials::Start trialStart, std::chrono::milliseconds trialLimit)
    : m_loader(InfoKey::prefPaneModule, PlugInLoader::sourcesOfTheSession()),
      m_actions(ActionBundle::all()),
      m_trials(std::move(trialStart), trialLimit)
{
    for (const ActionBundle &action : std::as_const(m_actions))
        m_known[action.path].action = action;
    connect(&m_trials, &PlugInTrials::passed, this, &ActionSides::load);
    connect(&m_trials, &PlugInTrials::failed, this,
            [this](const QString &fullPath, const QString &why) { fail(m_paths.value(fullPath), why); });
}

ActionSides::~ActionSides() = default;

ActionSides::Known &ActionSides::known(const QString &path)
{
    const auto found = m_known.find(path);
    if (found != m_known.end())
        return found->second;
    Known &made = m_known[path];
    made.action = ActionBundle::at(path);
    return made;
}

const ActionBundle &ActionSides::action(const QString &path)
{
    return known(path).action;
}

ActionSides::State ActionSides::state(const QString &path)
{
    Known &asked = known(path);
    if (!asked.wasAsked) {
        asked.wasAsked = true;
        if (asked.action.hasSettings) {
            const QString fullPath = asked.action.fullPath();
            m_paths.insert(fullPath, path);
            asked.state = State::Trying;
            m_trials.ask(fullPath);
        }
    }
    return asked.state;
}

QString ActionSides::failure(const QString &path) const
{
    const auto found = m_known.find(path);
    return found == m_known.end() ? QString() : found->second.failure;
}

ConfigurationSide *ActionSides::side(const QString &path)
{
    return state(path) == State::Ready ? known(path).side.get() : nullptr;
}

QString ActionSides::description(const QString &path, const QVariantMap &parameters)
{
    if (ConfigurationSide *const able = side(path)) {
        const auto described = able->describe(parameters);
        if (described && !described->isEmpty() && *described != "-")
            return *described;
        if (!able->failure().isEmpty())
            fail(path, able->failure());
    }
    return known(path).action.name;
}

void ActionSides::load(const QString &fullPath)
{
    const QString path = m_paths.value(fullPath);
    auto side = ConfigurationSide::make(m_loader, fullPath);
    if (!side) {
        fail(path, side.error().text);
        return;
    }
    Known &loaded = known(path);
    loaded.side = *std::move(side);
    loaded.state = State::Ready;
    Q_EMIT stateChanged(path);
}

void ActionSides::fail(const QString &path, const QString &why)
{
    Known &failed = known(path);
    failed.state = State::Failed;
    failed.failure = why;
    // From the event loop, since the side itself may be what tells of it.
    QMetaObject::invokeMethod(
        this, [this, path] { Q_EMIT stateChanged(path); }, Qt::QueuedConnection);
}

void ActionSides::noteRaised(QObject *receiver, const QString &why)
{
    for (auto &[path, known] : m_known) {
        if (!known.side || known.state != State::Ready)
            continue;
        const auto view = known.side->view();
        for (QObject *object = receiver; view && object; object = object->parent()) {
            if (object != *view)
                continue;
            known.side->giveUp(why);
            fail(path, why);
            return;
        }
    }
}
