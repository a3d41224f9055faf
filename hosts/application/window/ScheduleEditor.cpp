// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleEditor.h"

#include "DozelyKit/plugin/Names.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/window/ActionPane.h"
#include "hosts/application/window/Card.h"
#include "hosts/application/window/FormRows.h"
#include "hosts/application/window/NoticeBar.h"
#include "hosts/application/window/PolicyForm.h"
#include "hosts/application/window/PowerForm.h"
#include "hosts/application/window/ScheduleHeader.h"
#include "hosts/application/window/WhenPane.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr int widest = 720; // lines that are longer are hard to follow

Card *cardOf(const QString &title, QWidget *content)
{
    auto *const card = new Card(title);
    card->content()->addWidget(content);
    return card;
}
} // namespace

ScheduleEditor::ScheduleEditor(ScheduleBook &book, ActionSides &sides, quint32 user, QWidget *parent)
    : QScrollArea(parent),
      m_book(book),
      m_sides(sides),
      m_notice(new NoticeBar),
      m_header(new ScheduleHeader),
      m_action(new ActionPane(sides)),
      m_when(new WhenPane),
      m_power(new PowerForm),
      m_policy(new PolicyForm(user))
{
    setObjectName("editor");
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    makeCards();
    connectCards();
}

void ScheduleEditor::makeCards()
{
    auto *const page = new QWidget;
    auto *const centred = new QHBoxLayout(page);
    centred->setContentsMargins(24, 20, 24, 24);
    auto *const column = new QWidget;
    column->setMaximumWidth(widest);
    centred->addStretch(1);
    centred->addWidget(column, 1000);
    centred->addStretch(1);
    auto *const cards = new QVBoxLayout(column);
    cards->setContentsMargins(0, 0, 0, 0);
    cards->setSpacing(18);
    cards->addWidget(m_notice);
    cards->addWidget(m_header);
    cards->addWidget(cardOf(tr("Action"), m_action));
    cards->addWidget(cardOf(tr("When"), m_when));
    cards->addWidget(cardOf(tr("Before"), m_power));
    cards->addWidget(cardOf(tr("Options"), m_policy));
    cards->addStretch();
    setWidget(page);
    FormRows::align({&m_power->rows(), &m_policy->rows()});
}

void ScheduleEditor::connectCards()
{
    connect(&m_book, &ScheduleBook::rowChanged, this, [this](int row) {
        if (m_book.at(row).key == m_key)
            refresh();
    });
    connect(&m_sides, &ActionSides::stateChanged, this, &ScheduleEditor::refresh);
    connect(m_header, &ScheduleHeader::nameEdited, this, [this](const QString &name) {
        m_book.change(m_key, {{ScheduleKey::name, name}}, tr("Change of the name"),
                      ScheduleBook::Step::JoinsLast);
    });
    connect(m_header, &ScheduleHeader::enabledEdited, this, [this](bool isEnabled) {
        m_book.change(m_key, {{ScheduleKey::isEnabled, isEnabled}},
                      isEnabled ? tr("Switching on") : tr("Switching off"));
    });
    connect(m_action, &ActionPane::chosen, this, &ScheduleEditor::chooseAction);
    connect(m_action, &ActionPane::edited, this,
            [this](const QVariantMap &changes) { changeParameters(changes, tr("Change of the action")); });
    connect(m_when, &WhenPane::edited, this, [this](const ScheduleTimes &times) {
        m_book.change(m_key, times.toValues(), tr("Change of the time"), ScheduleBook::Step::JoinsLast);
    });
    connect(m_power, &PowerForm::edited, this, [this](const QVariantMap &changes) {
        changeParameters(changes, tr("Change of what comes before"));
    });
    connect(m_policy, &PolicyForm::edited, this,
            [this](const QVariantMap &changes, const QString &what) { m_book.change(m_key, changes, what); });
}

bool ScheduleEditor::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FormRows::align({&m_power->rows(), &m_policy->rows()});
    return QScrollArea::event(event);
}

QSize ScheduleEditor::minimumSizeHint() const
{
    const int page = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    return {std::min(page, widest), QScrollArea::minimumSizeHint().height()};
}

void ScheduleEditor::setKey(const QString &key)
{
    if (key == m_key)
        return;
    commit();
    m_key = key;
    verticalScrollBar()->setValue(0);
    refresh();
}

void ScheduleEditor::commit()
{
    m_action->commit();
}

QString ScheduleEditor::fault() const
{
    const BookEntry *const entry = m_book.entry(m_key);
    return entry && entry->wanted && entry->isChanged() ? m_when->fault() : QString();
}

void ScheduleEditor::editName()
{
    m_header->editName();
}

void ScheduleEditor::refresh()
{
    const BookEntry *const entry = m_book.entry(m_key);
    const bool isThere = entry && entry->wanted;
    widget()->setVisible(isThere);
    if (!isThere) {
        m_action->clear();
        return;
    }
    const QString path = entry->value(ScheduleKey::bundlePath).toString();
    const QVariantMap parameters = entry->value(ScheduleKey::parameters).toMap();
    const ActionBundle &action = m_sides.action(path);
    m_header->showSchedule(entry->value(ScheduleKey::name).toString(),
                           entry->value(ScheduleKey::isEnabled).toBool());
    m_header->showAction(action.icon, m_sides.description(path, parameters));
    m_action->show(path, parameters);
    m_when->show(ScheduleTimes::of(*entry->wanted));
    m_power->show(parameters);
    m_policy->show(*entry, action);
    showNotice();
    updateGeometry(); // the view of another action may be wider
}

void ScheduleEditor::showNotice()
{
    const BookEntry &entry = *m_book.entry(m_key);
    if (entry.isChangedElsewhere && entry.applied)
        m_notice->tell(NoticeBar::Kind::Warning,
                       tr("Somebody else has changed this schedule, too. What you see is yours."),
                       {{tr("Take over theirs"), [this] { m_book.revert(m_key, tr("Taking over")); }},
                        {tr("Keep mine"), [this] { m_book.keepOwn(m_key); }}});
    else if (entry.isChangedElsewhere)
        m_notice->tell(NoticeBar::Kind::Warning,
                       tr("Somebody else has removed this schedule. Applying your changes adds it again."));
    else if (entry.isInfeasible)
        m_notice->tell(NoticeBar::Kind::Warning, tr("This was not applied: %1").arg(entry.failure),
                       {{tr("Apply all the same"), [this] { m_book.applyAnyway(m_key); }}});
    else if (!entry.failure.isEmpty())
        m_notice->tell(NoticeBar::Kind::Warning, tr("This could not be applied: %1").arg(entry.failure));
    else
        m_notice->clear();
}

void ScheduleEditor::changeParameters(const QVariantMap &changes, const QString &what)
{
    const BookEntry *const entry = m_book.entry(m_key);
    if (!entry)
        return;
    QVariantMap parameters = entry->value(ScheduleKey::parameters).toMap();
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it.value().isValid())
            parameters.insert(it.key(), it.value());
        else
            parameters.remove(it.key());
    }
    // The letters of a text are one step, the text and a check mark two.
    const QStringList edited = QStringList(m_key) + changes.keys();
    const auto step = edited == m_lastEdited ? ScheduleBook::Step::JoinsLast : ScheduleBook::Step::Own;
    m_lastEdited = edited;
    m_book.change(m_key, {{ScheduleKey::parameters, parameters}}, what, step);
}

void ScheduleEditor::chooseAction(const QString &path, const QVariantMap &defaults)
{
    const BookEntry *const entry = m_book.entry(m_key);
    if (!entry)
        return;
    // What means the same for every action stays as it was wanted.
    const QVariantMap before = entry->value(ScheduleKey::parameters).toMap();
    QVariantMap parameters = defaults;
    for (const auto key :
         {ParameterKey::alert, ParameterKey::delayBeforeAlert, ParameterKey::needsWakeUp,
          ParameterKey::needsStartup, ParameterKey::tellsFailure, ParameterKey::actsInUserAgent}) {
        if (before.contains(key))
            parameters.insert(key, before.value(key));
    }
    QVariantMap changes{{ScheduleKey::bundlePath, path}, {ScheduleKey::parameters, parameters}};
    if (!entry->applied && m_sides.action(path).isOfSystemAlone) {
        changes.insert(ScheduleKey::owner, QVariant());
        changes.insert(ScheduleKey::actsIn, "daemon");
    }
    m_book.change(m_key, changes, tr("Choice of an action"));
}
