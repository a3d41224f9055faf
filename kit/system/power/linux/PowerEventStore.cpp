// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/PowerEventStore_p.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <cerrno>

namespace dozely
{

namespace
{
constexpr int fileMode = 0644; // anybody may know when the machine will wake
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

Result<Content> parse(const QByteArray &data)
{
    Content content;
    const auto list = PropertyList::fromData(data, &content.form);
    if (!list)
        return list.error();
    QVariantMap root = list->toMap();
    const QVariant events = root.take(eventsKey);
    const QVariant version = root.take(formatKey);
    if (events.typeId() != QMetaType::QVariantList || version != QVariant(format))
        return Error{"it is no list of power events"};
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
    return PropertyList::toData(root, content.form);
}

GuardedFile eventFile()
{
    return GuardedFile({PowerEventStore::path(), PropertyList::maximumSize, fileMode,
                        GuardedFile::Owners::SystemAndThisUser});
}
} // namespace

PowerEventStore::PowerEventStore(GuardedFile file, GuardedFile::Lock lock)
    : m_file(std::move(file)), m_lock(std::move(lock))
{
}

QString PowerEventStore::path()
{
    return RootFolder::join("/var/lib/dozely/power-events.plist");
}

bool PowerEventStore::exists()
{
    return eventFile().exists();
}

PowerEventStore::Opening PowerEventStore::open()
{
    GuardedFile file = eventFile();
    auto lock = file.lock();
    if (!lock)
        return {nullptr, lock.error().name == GuardedFile::busy ? EBUSY : EACCES};
    std::unique_ptr<PowerEventStore> store(new PowerEventStore(std::move(file), *std::move(lock)));
    if (const int failure = store->load(); failure != 0)
        return {nullptr, failure};
    return {std::move(store)};
}

int PowerEventStore::load()
{
    const auto data = m_file.read();
    if (data && !*data)
        return 0;
    if (!data && data.error().name == GuardedFile::untrusted) {
        reportProblem(QString("The power events are not read: %1.").arg(data.error().text));
        return EPERM;
    }
    if (!data && data.error().name != GuardedFile::tooLarge)
        return EACCES;
    auto content = data ? parse(**data) : data.error();
    if (content) {
        m_content = *std::move(content);
        return 0;
    }
    if (!m_file.setAside(GuardedFile::Earlier::Kept))
        return EIO;
    reportProblem(QString("The power events are damaged and were set aside: %1.").arg(content.error().text));
    return 0;
}

PowerEventStore::Content PowerEventStore::peek()
{
    const auto data = eventFile().read();
    const auto content = data && *data ? parse(**data) : Content();
    return content ? *content : Content();
}

int PowerEventStore::save(const Content &content)
{
    if (content == m_content)
        return 0;
    const auto saved = m_file.replace(dataOf(content));
    if (!saved) // EFBIG also for a date that no property list can hold
        return saved.error().name == GuardedFile::tooLarge ? EFBIG : EIO;
    m_content = content;
    return 0;
}

} // namespace dozely
