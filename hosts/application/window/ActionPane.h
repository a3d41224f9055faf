// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

/// Where a schedule's action is chosen, and edited in the view of its bundle. Where there is no such view, a
/// sentence says why.
class ActionPane : public QWidget
{
    Q_OBJECT
public:
    /// `sides` outlives it.
    explicit ActionPane(ActionSides &sides, QWidget *parent = nullptr);
    ~ActionPane() override;

    /// Shows an action; what stands in a view that shows just these parameters stays untouched.
    void show(const QString &path, const QVariantMap &parameters);

    /// Shows nothing, and lets go of the view.
    void clear();

    /// Tells at once of what was edited in the view and not told yet.
    void commit();

Q_SIGNALS:
    /// Another action was chosen, with what a new schedule of it begins with.
    void chosen(const QString &path, const QVariantMap &defaults);

    /// These parameters were edited; an invalid value stands for one that is not there any more.
    void edited(const QVariantMap &changes);

private:
    void showChoice();
    void choose(int index);
    void finishChoice();
    void follow(const QString &path);
    void showSide();
    void showFailure(const QString &why);
    void showSentence(const QString &sentence);
    void letGo();

    ActionSides &m_sides;
    QComboBox *m_chooser;
    QLabel *m_sentence;
    QVBoxLayout *m_place;
    QString m_path;
    QVariantMap m_parameters;           // as they were given
    QVariantMap m_read;                 // as the view gave them for these
    QPointer<ConfigurationSide> m_side; // whose view is shown
    QPointer<QWidget> m_view;
    QString m_choice; // chosen, and still being tried
};
