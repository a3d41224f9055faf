// SPDX-License-Identifier: MIT
//
// What the record of occurrences costs: an occurrence from its beginning to its end, with hardly any others
// on record and with 100,000 of them; and how often the disk is waited for when a thousand begin in one turn.
#include "Bench.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/daemon/OccurrenceDatabase.h"

#include <QDir>
#include <QTemporaryDir>

#include <dlfcn.h>
#include <unistd.h>

using namespace dozely;

namespace
{
int syncs = 0;

template<class Function>
int counted(const char *name, int descriptor)
{
    ++syncs;
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name))(descriptor);
}

constexpr int schedules = 1000;

QString identifier(int schedule)
{
    return QString("schedule-%1").arg(schedule);
}

QDateTime date(int occurrence)
{
    return QDateTime::fromSecsSinceEpoch(1'800'000'000 + occurrence, Qt::UTC);
}

/// A record below a folder of its own.
class Record
{
public:
    Record()
    {
        QDir().mkpath(m_folder.filePath("var/lib/dozely"));
        RootFolder::set(m_folder.path());
        m_database.open(date(0));
    }

    /// Notes the same of one occurrence each of so many schedules.
    void note(OccurrenceState state, int count, int occurrence)
    {
        OccurrenceRecord record;
        OccurrenceEntry entry;
        entry.state = state;
        entry.place = ActingPlace::Daemon;
        entry.begun = date(occurrence);
        for (int i = 0; i < count; ++i)
            record.set(identifier(i), date(occurrence), entry);
        if (!m_database.write(record.changes(),
                              [](const QString &) { return OccurrenceDatabase::Occurrences(); }))
            std::abort();
    }

    /// One occurrence from its beginning to its end.
    void perform()
    {
        note(OccurrenceState::Begun, 1, m_next);
        note(OccurrenceState::Done, 1, m_next);
        ++m_next;
    }

    /// As many as it ever keeps of so many schedules.
    void fill()
    {
        for (; m_next < 100; ++m_next)
            note(OccurrenceState::Done, schedules, m_next);
    }

private:
    QTemporaryDir m_folder{QDir::currentPath() + "/dz-XXXXXX"}; // on a disk, which /tmp need not be
    OccurrenceDatabase m_database;
    int m_next = 0;
};
} // namespace

// SQLite finds these before those of the C library.
extern "C" __attribute__((visibility("default"))) int fsync(int descriptor)
{
    return counted<int(int)>("fsync", descriptor);
}

extern "C" __attribute__((visibility("default"))) int fdatasync(int descriptor)
{
    return counted<int(int)>("fdatasync", descriptor);
}

int main()
{
    Record few;
    Record many;
    many.fill();
    for (int i = 0; i < 1000; ++i) { // until their files grow no more
        few.perform();
        many.perform();
    }

    Bench bench;
    bench.add("with a few rows", [&] { few.perform(); });
    bench.add("with 100,000 rows", [&] { many.perform(); });
    bench.run(20, 20);

    syncs = 0;
    many.note(OccurrenceState::Begun, schedules, 1'000'000);
    if (syncs == 0)
        return 1; // they are not counted, since what is durable needs one
    const QJsonObject turn{{"what", "1,000 occurrences that begin in one turn: waits for the disk"},
                           {"value", syncs},
                           {"unit", ""},
                           {"reach", 3},
                           {"detail", "fsync and fdatasync"}};
    bench.print("an occurrence on record, begun and done", {{"with 100,000 rows", "with a few rows", 1.1}},
                {turn});
    return 0;
}
