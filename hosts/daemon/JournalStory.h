// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/Journal.h"
#include "hosts/daemon/OccurrenceRecord.h"

#include <QList>
#include <QObject>

namespace dozely
{
class Clock;
}

class DaemonController;

/// Tells the machine's journal what becomes of occurrences, with fields by which it can be searched
/// (docs/reliability.md): any user may write the log file, nobody else these entries.
///
/// What it tells is sent a moment after it happened, so that no action begins later for it, and some at a
/// time.
///
/// THREADING: the main thread. BLOCKING: never.
class JournalStory : public QObject
{
    Q_OBJECT
public:
    /// Both must outlive the object.
    JournalStory(DaemonController &controller, dozely::Clock &clock);

    /// Sends what is left.
    ~JournalStory() override;

private:
    struct Entry {
        OccurrenceRecord::Key key;
        QByteArray messageId;
        bool isBad = false;
        QString what; ///< What the message says behind the schedule's name.
        Journal::Fields details;
    };
    void tell(Entry entry);
    void tellOutcome(const OccurrenceRecord::Key &key);
    void sendSoon(std::chrono::milliseconds delay);
    void send(int most);
    Journal::Fields fieldsOf(const Entry &entry) const;

    DaemonController &m_controller;
    dozely::Clock &m_clock;
    Journal m_journal;
    QList<Entry> m_waiting;
    bool m_isSendComing = false;
};
