// SPDX-License-Identifier: MIT
#include "hosts/application/window/PolicyForm.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/when/WheelGuard.h"
#include "hosts/application/window/FormRows.h"
#include "hosts/common/schedules/SchedulePolicies.h"

namespace
{
enum Person { InMySession, AsRoot, SomebodyElse };

QLabel *newHint()
{
    auto *const hint = new QLabel;
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    return hint;
}

void select(QComboBox &choice, const QString &value, const QString &usual)
{
    const int row = choice.findData(value.isEmpty() ? usual : value);
    choice.setCurrentIndex(row);
}
} // namespace

PolicyForm::PolicyForm(quint32 user, QWidget *parent)
    : QWidget(parent),
      m_user(user),
      m_form(FormRows::make()),
      m_missed(new QComboBox),
      m_after(new QComboBox),
      m_person(new QComboBox),
      m_afterHint(newHint()),
      m_hint(newHint())
{
    setLayout(m_form);
    m_missed->setObjectName("missed");
    m_after->setObjectName("after");
    m_person->setObjectName("person");
    fillChoices();
    FormRows::add(*m_form, tr("If &missed:"), m_missed);
    FormRows::add(*m_form, tr("Af&terwards:"), m_after);
    FormRows::addBeside(*m_form, m_afterHint);
    FormRows::add(*m_form, tr("Runs &as:"), m_person);
    FormRows::addBeside(*m_form, m_hint);

    connect(m_missed, &QComboBox::activated, this, [this] {
        Q_EMIT edited({{ScheduleKey::missed, m_missed->currentData()}}, tr("Change of what is missed"));
    });
    connect(m_after, &QComboBox::activated, this, [this] {
        Q_EMIT edited({{ScheduleKey::after, m_after->currentData()}}, tr("Change of what comes afterwards"));
    });
    connect(m_person, &QComboBox::activated, this, [this] {
        if (m_person->currentData() == SomebodyElse)
            return; // as it is
        const bool isMine = m_person->currentData() == InMySession;
        Q_EMIT edited({{ScheduleKey::owner, isMine ? QVariant(m_user) : QVariant()},
                       {ScheduleKey::actsIn, isMine ? "session" : "daemon"}},
                      tr("Change of who runs it"));
    });
}

void PolicyForm::fillChoices()
{
    m_missed->addItem(tr("As the action itself says"), SchedulePolicies::nameOf(MissedPolicy::PlugIn));
    m_missed->addItem(tr("Leave it out"), SchedulePolicies::nameOf(MissedPolicy::Skip));
    m_missed->addItem(tr("Do it once, as soon as possible"), SchedulePolicies::nameOf(MissedPolicy::RunOnce));
    m_after->addItem(tr("Nothing more"), SchedulePolicies::nameOf(AfterAction::Nothing));
    m_after->addItem(tr("Sleep again, if it was woken for this"),
                     SchedulePolicies::nameOf(AfterAction::Sleep));
    m_after->addItem(tr("Switch off, if it was woken or switched on for this"),
                     SchedulePolicies::nameOf(AfterAction::PowerOff));
    for (QComboBox *const choice : {m_missed, m_after, m_person}) {
        choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        choice->setMinimumContentsLength(16);
        WheelGuard::guard(choice);
        choice->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
}

void PolicyForm::show(const BookEntry &entry, const ActionBundle &action)
{
    select(*m_missed, entry.value(ScheduleKey::missed).toString(), m_missed->itemData(0).toString());
    select(*m_after, entry.value(ScheduleKey::after).toString(), m_after->itemData(0).toString());
    const QVariantMap parameters = entry.value(ScheduleKey::parameters).toMap();
    const bool comesBack =
        dozely::longIntegerValue(parameters.value(dozely::ParameterKey::needsWakeUp)) == 1 ||
        dozely::longIntegerValue(parameters.value(dozely::ParameterKey::needsStartup)) == 1;
    const bool isIdle = m_after->currentIndex() > 0 && !comesBack;
    m_afterHint->setText(isIdle ? tr("This never comes: the computer is neither woken nor switched on for "
                                     "this schedule.")
                                : QString());
    m_form->setRowVisible(m_afterHint, isIdle);
    showPerson(entry, action);
}

void PolicyForm::showPerson(const BookEntry &entry, const ActionBundle &action)
{
    const QVariant owner = entry.value(ScheduleKey::owner);
    const QString place = entry.value(ScheduleKey::actsIn).toString();
    const bool isMine = owner.isValid() && owner.toUInt() == m_user;
    const bool isInSession =
        !action.isOfSystemAlone && (place.isEmpty() ? action.actsInSession : place == "session");
    m_person->clear();
    if (!action.isOfSystemAlone)
        m_person->addItem(tr("Me, in my session"), InMySession);
    if (!action.isUsersOwn)
        m_person->addItem(tr("Administrator, in the background"), AsRoot);
    const Person person = isMine && isInSession              ? InMySession
                          : !owner.isValid() && !isInSession ? AsRoot
                                                             : SomebodyElse;
    if (person == SomebodyElse) {
        //: whoever is logged in when the time comes
        const QString text = !owner.isValid() ? tr("Whoever is at the computer")
                             : isMine         ? tr("Administrator, for me")
                                              : tr("Another user (number %1)").arg(owner.toUInt());
        m_person->addItem(text, SomebodyElse);
    }
    m_person->setCurrentIndex(m_person->findData(person));
    QString hint;
    const bool wasRoots = entry.applied && !entry.applied->contains(ScheduleKey::owner);
    if (person == AsRoot && !wasRoots)
        hint = tr("You will be asked for an administrator's password.");
    else if (entry.applied && !entry.mayChange)
        hint = tr("Changing this schedule needs an administrator's password.");
    m_hint->setText(hint);
    m_form->setRowVisible(m_hint, !hint.isEmpty());
}
