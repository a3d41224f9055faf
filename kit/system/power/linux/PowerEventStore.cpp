// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/PowerEventStore_p.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace
{
constexpr int fileMode = 0644; // anybody may know when the machine will wake
constexpr int lockMode = 0600; // whoever can open it can keep it from everybody
constexpr std::chrono::seconds lockTime{5};
constexpr std::chrono::milliseconds lockPause{10};
constexpr qint64 format = 1;

constexpr char formatKey[] = "Format";
constexpr char eventsKey[] = "Events";
constexpr char armedKey[] = "Armed";
constexpr char timeKey[] = "time";
constexpr char ownerKey[] = "scheduledby";
constexpr char typeKey[] = "eventtype";

using Event = PowerEventScheduler::Event;
using Content = PowerEventStore::Content;

std::optional<Event> eventIn(const QVariant &entry)
{
    const QVariantMap values = entry.toMap();
    const QVariant time = values.value(timeKey);
    const QVariant owner = values.value(ownerKey);
    const QVariant type = values.value(typeKey);
    if (values.size() != 3 || time.typeId() != QMetaType::QDateTime || owner.typeId() != QMetaType::QString ||
        type.typeId() != QMetaType::QString)
        return {};
    if (type != QVariant(PowerEventScheduler::wake) && type != QVariant(PowerEventScheduler::powerOn))
        return {};
    return Event{time.toDateTime(), owner.toString(), type.toString()};
}

std::optional<Content> parse(const QByteArray &data, QString *error)
{
    const auto list = PropertyList::fromData(data, error);
    if (!list)
        return {};
    QVariantMap root = list->toMap();
    const QVariant events = root.take(eventsKey);
    const QVariant version = root.take(formatKey);
    if (events.typeId() != QMetaType::QVariantList || version != QVariant(format)) {
        *error = "it is no list of power events";
        return {};
    }
    Content content;
    if (root.value(armedKey).typeId() == QMetaType::LongLong)
        content.armed = root.take(armedKey).toLongLong();
    for (const QVariant &entry : events.toList()) {
        if (const auto event = eventIn(entry))
            content.events += *event;
        else
            content.foreign += entry;
    }
    content.rest = root;
    return content;
}

QByteArray dataOf(const Content &content)
{
    QVariantList entries = content.foreign;
    for (const Event &event : content.events)
        entries += QVariantMap{{timeKey, event.time}, {ownerKey, event.owner}, {typeKey, event.type}};
    QVariantMap root = content.rest;
    root.insert(formatKey, format);
    root.insert(eventsKey, entries);
    if (content.armed)
        root.insert(armedKey, *content.armed);
    return PropertyList::toData(root, PropertyList::Format::Xml);
}

/// Moves the file to a name that nothing has yet. False when that failed.
bool setAside()
{
    const QString path = PowerEventStore::path();
    QString aside = path + ".damaged";
    for (int number = 2; QFileInfo::exists(aside) || QFileInfo(aside).isSymLink(); ++number)
        aside = QString("%1.damaged-%2").arg(path).arg(number);
    return QFile::rename(path, aside);
}

bool isTrusted(QString *why)
{
    QList<quint32> owners{NSProcessInfo::effectiveUserID()};
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    const auto trusted = isTrustedPath(PowerEventStore::path(), owners);
    if (!trusted)
        *why = trusted.error().text + '.';
    return trusted.ok();
}
/// A descriptor that has the lock; -1, with `*failure`, when it is not to be had.
int takeLock(int *failure)
{
    const int file = ::open(QFile::encodeName(PowerEventStore::path() + ".lock").constData(),
                            O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, lockMode);
    *failure = file < 0 ? errno : 0;
    const QDeadlineTimer deadline(lockTime);
    while (*failure == 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            *failure = errno;
        else if (deadline.hasExpired())
            *failure = EBUSY;
        else
            std::this_thread::sleep_for(lockPause);
    }
    if (*failure == 0)
        return file;
    if (file >= 0)
        ::close(file);
    return -1;
}
} // namespace

QString PowerEventStore::path()
{
    return RootFolder::join("/var/lib/dozely/power-events.plist");
}

bool PowerEventStore::exists()
{
    const QFileInfo file(path());
    return file.exists() || file.isSymLink();
}

PowerEventStore::~PowerEventStore()
{
    ::close(m_lock);
}

std::unique_ptr<PowerEventStore> PowerEventStore::open(int *failure)
{
    QDir().mkpath(QFileInfo(path()).path());
    const int lock = takeLock(failure);
    if (lock < 0)
        return nullptr;
    std::unique_ptr<PowerEventStore> store(new PowerEventStore(lock));
    *failure = store->load();
    return *failure == 0 ? std::move(store) : nullptr;
}

int PowerEventStore::load()
{
    if (!exists())
        return 0;
    QString error;
    if (!isTrusted(&error)) {
        reportProblem(QString("The power events are not read: %1").arg(error));
        return EPERM;
    }
    const auto data = readRegularFile(path(), PropertyList::maximumSize, false);
    if (!data) {
        if (data.error().name != fileTooLarge)
            return EACCES;
        error = data.error().text + '.';
    }
    if (auto content = data ? parse(*data, &error) : std::nullopt) {
        m_content = *std::move(content);
        return 0;
    }
    if (!setAside())
        return EIO;
    reportProblem(QString("The power events are damaged and were set aside: %1").arg(error));
    return 0;
}

PowerEventStore::Content PowerEventStore::peek()
{
    QString error;
    if (!exists() || !isTrusted(&error))
        return {};
    const auto data = readRegularFile(path(), PropertyList::maximumSize, false);
    return (data ? parse(*data, &error) : std::nullopt).value_or(Content());
}

int PowerEventStore::save(const Content &content)
{
    if (content == m_content)
        return 0;
    const QByteArray data = dataOf(content);
    if (data.isNull())
        return EFBIG; // or a date that no property list can hold
    if (!replaceFileAtomically(path(), data, fileMode))
        return EIO;
    m_content = content;
    return 0;
}
