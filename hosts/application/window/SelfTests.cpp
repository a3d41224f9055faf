// SPDX-License-Identifier: MIT
#include "hosts/application/window/SelfTests.h"

#include "hosts/common/words/ReasonWords.h"

#include <QPointer>

#include <utility>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds sleepTime(60);
} // namespace

SelfTests::SelfTests(SchedulerClient &client) : m_client(client) {}

void SelfTests::testAlert()
{
    const auto answered = [self = QPointer(this)](bool isTaken) {
        if (!self)
            return;
        if (isTaken)
            Q_EMIT self->told(
                NoticeBar::Kind::Information,
                tr("An alert is shown now that announces nothing. If you see none, look whether your "
                   "desktop keeps notifications back (“do not disturb”)."),
                {});
        else
            Q_EMIT self->told(
                NoticeBar::Kind::Warning,
                tr("No alert can be shown: the agent in your session does not answer. It starts when you "
                   "log in. To start it now: systemctl --user start dozely-agent"),
                {});
    };
    if (m_request)
        m_request(answered);
    else
        answered(false);
}

void SelfTests::testWaking()
{
    if (std::exchange(m_isTestingWaking, true))
        return;
    m_client.testWaking(std::chrono::seconds(0), [self = QPointer(this)](const Result<QVariantMap> &finding) {
        if (self)
            self->tellFinding(finding);
    });
}

void SelfTests::sleep()
{
    if (std::exchange(m_isTestingWaking, true))
        return;
    Q_EMIT told(NoticeBar::Kind::Information,
                tr("The computer goes to sleep for a minute. Leave it alone meanwhile."), {});
    m_client.testWaking(sleepTime, [self = QPointer(this)](const Result<QVariantMap> &finding) {
        if (self)
            self->tellFinding(finding);
    });
}

void SelfTests::tellFinding(const Result<QVariantMap> &finding)
{
    m_isTestingWaking = false;
    const auto tell = [this](NoticeBar::Kind kind, const QString &sentence, bool offersSleep = false) {
        const NoticeBar::Remedy sleepNow{tr("Sleep for a minute"), [this] { sleep(); }};
        Q_EMIT told(kind, sentence, offersSleep ? QList{sleepNow} : QList<NoticeBar::Remedy>());
    };
    if (!finding)
        return tell(NoticeBar::Kind::Warning,
                    tr("Waking was not tested: %1").arg(ReasonWords::of(finding.error())));
    const QString outcome = finding->value("outcome").toString();
    if (outcome == "kept")
        tell(NoticeBar::Kind::Information,
             tr("The clock took an alarm and gave it back. Whether it also wakes this computer shows when "
                "the computer sleeps."),
             true);
    else if (outcome == "no clock")
        tell(NoticeBar::Kind::Warning,
             tr("This computer has no clock that could wake it. Leave it on, or have missed schedules done "
                "later."));
    else if (outcome == "dropped")
        tell(NoticeBar::Kind::Warning,
             tr("The clock of this computer does not keep an alarm. Look into the settings of its firmware "
                "(BIOS, UEFI) whether waking by the clock is switched on."));
    else if (outcome == "woken")
        tell(NoticeBar::Kind::Information, tr("The computer slept, and its clock woke it. Waking works."));
    else if (outcome == "too early")
        tell(NoticeBar::Kind::Warning,
             tr("The computer was awake before its clock could wake it. Try again, and leave it alone "
                "meanwhile."),
             true);
    else if (outcome == "too late")
        tell(NoticeBar::Kind::Warning,
             tr("The computer slept on when its clock was to wake it. Look into the settings of its "
                "firmware (BIOS, UEFI) whether waking by the clock is switched on."));
    else // a newer daemon's
        tell(NoticeBar::Kind::Information, finding->value("sentence").toString());
}
