// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionBundle.h"
#include "hosts/application/actions/ConfigurationSide.h"
#include "hosts/application/actions/PlugInTrials.h"

#include <QHash>
#include <QObject>

/// The actions of a window, and the configuration side of each, loaded once it was tried elsewhere.
///
/// THREADING: the main thread. BLOCKING: what the plug-ins' own code takes.
class ActionSides : public QObject
{
    Q_OBJECT
public:
    enum class State {
        None,   ///< It has no configuration side.
        Trying, ///< It is being tried.
        Ready,
        Failed, ///< failure() says why.
    };

    explicit ActionSides(PlugInTrials::Start trialStart,
                         std::chrono::milliseconds trialLimit = PlugInTrials::usualLimit);
    ~ActionSides() override;

    /// Those to choose from, as they lay in the folders when this was made.
    const QList<ActionBundle> &actions() const { return m_actions; }

    /// The action at a path, among those to choose from or not.
    const ActionBundle &action(const QString &path);

    /// How it is with the side of an action; the first question has it tried.
    State state(const QString &path);
    QString failure(const QString &path) const; ///< A sentence.

    /// Null unless its state is Ready.
    ConfigurationSide *side(const QString &path);

    /// The action in a few words; its name as long as it cannot be asked.
    QString description(const QString &path, const QVariantMap &parameters);

    /// Something came out of `receiver`'s code in an event: the side to whose view it belongs is given up.
    void noteRaised(QObject *receiver, const QString &why);

Q_SIGNALS:
    /// The state of an action is another one.
    void stateChanged(const QString &path);

private:
    struct Known {
        ActionBundle action;
        State state = State::None;
        bool wasAsked = false;
        QString failure;
        std::unique_ptr<ConfigurationSide> side;
    };
    Known &known(const QString &path);
    void load(const QString &fullPath);
    void fail(const QString &path, const QString &why);

    PlugInLoader m_loader;
    QList<ActionBundle> m_actions;
    std::map<QString, Known> m_known; // by path
    QHash<QString, QString> m_paths;  // by full path
    PlugInTrials m_trials;
};
