// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"

#include "DozelyKit/communication/channel/SocketFolder_p.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <optional>
#include <unistd.h>

using namespace dozely;

namespace
{

constexpr int replySuffixLength = 3; // letters

// The parameters that the base port takes: Unix domain, stream.
constexpr int protocolFamily = 1;
constexpr int socketType = 1;
constexpr int protocol = 0;

// Values of _type.
constexpr qint64 clientType = 1;
constexpr qint64 removingType = 2; // would remove its socket file; no port has it
constexpr qint64 destroyedType = -1;

/// The address as the socket layer takes it, always whole.
struct AddressRecord {
    quint8 length; // of the path, and the two bytes of this header
    quint8 family;
    char path[104]; // UTF-8; a longer path is cut and has no terminating zero
};
static_assert(sizeof(AddressRecord) == 106);

QByteArray addressRecord(const QString &path)
{
    const QByteArray text = path.toUtf8();
    AddressRecord record;
    std::memset(&record, 0, sizeof record);
    const qsizetype zero = text.indexOf('\0');
    const auto length = std::min(static_cast<size_t>(zero < 0 ? text.size() : zero), sizeof record.path);
    std::memcpy(record.path, text.constData(), length);
    record.length = static_cast<quint8>(offsetof(AddressRecord, path) + length);
    record.family = protocolFamily;
    return QByteArray(reinterpret_cast<const char *>(&record), sizeof record);
}

QString pathOfName(const QString &name)
{
    return stringWithFormat(QStringLiteral("%@/%@"), {ZDRUnixSocketPort::socketFolder(), name});
}

void clearFolder()
{
    SocketFolder::wipe(SocketFolder::place);
    SocketFolder::create(SocketFolder::place);
    ZDRLog("Cleared sockets folder");
}

std::once_flag initialization;
bool worksForAnother = false;

/// The socket file that is to go with this process.
struct OwnFile {
    pid_t process = 0; // a child that is forked has none
    QString path;
    std::optional<SocketFolder::SocketIdentity> identity;
};

OwnFile &ownFile()
{
    static auto &file = *new OwnFile; // for the end of the process
    return file;
}

void removeOwnFile()
{
    const OwnFile &file = ownFile();
    if (file.process == ::getpid() && file.identity && SocketFolder::socketAt(file.path) == file.identity)
        SocketFolder::clearEntry(file.path);
}

} // namespace

ZDRUnixSocketPort::ZDRUnixSocketPort() = default;

ZDRUnixSocketPort::~ZDRUnixSocketPort()
{
    if (isValid())
        ZDRUnixSocketPort::invalidate();
    _portName = QString();
    _type = destroyedType;
}

void ZDRUnixSocketPort::initialize()
{
    std::call_once(initialization, [] {
        if (NSProcessInfo::effectiveUserID() == 0)
            clearFolder();
    });
}

void ZDRUnixSocketPort::workForAnother()
{
    std::call_once(initialization, [] { worksForAnother = true; });
}

void ZDRUnixSocketPort::clearExistingSockets()
{
    initialize();
    clearFolder();
}

QString ZDRUnixSocketPort::socketFolder()
{
    return RootFolder::join(SocketFolder::place);
}

std::shared_ptr<ZDRUnixSocketPort> ZDRUnixSocketPort::initAsServerWithName(const QString &name)
{
    initialize();
    if (name.isEmpty())
        return nullptr;
    const QString path = pathOfName(name);
    if (!SocketFolder::clearEntry(path)) {
        ZDRLog("Could not remove previous socket file: %@", path);
        return nullptr;
    }
    std::shared_ptr<ZDRUnixSocketPort> port(new ZDRUnixSocketPort);
    if (!port->initWithProtocolFamily(protocolFamily, socketType, protocol, addressRecord(path)))
        return nullptr;
    if (!SocketFolder::openSocketToEverybody(path)) {
        ZDRLog("Could not chmod 0666 socket file at path: %@", path);
        return nullptr;
    }
    return port;
}

std::shared_ptr<ZDRUnixSocketPort> ZDRUnixSocketPort::initAsClientWithName(const QString &name)
{
    initialize();
    if (name.isEmpty())
        return nullptr;
    const QString path = pathOfName(name);
    if (!SocketFolder::hasFile(path))
        return nullptr;
    std::shared_ptr<ZDRUnixSocketPort> port(new ZDRUnixSocketPort);
    if (!port->initRemoteWithProtocolFamily(protocolFamily, socketType, protocol, addressRecord(path)))
        return nullptr;
    port->_portName = path;
    port->_type = clientType;
    return port;
}

std::shared_ptr<ZDRUnixSocketPort> ZDRUnixSocketPort::port()
{
    initialize();
    // Never destroyed: other objects may still use it while the process ends.
    static auto &shared = *new std::shared_ptr<ZDRUnixSocketPort>;
    static std::mutex creation;
    const std::lock_guard guard(creation);
    if (!shared) {
        const QString name =
            stringWithFormat(QStringLiteral("%@.%d.%@"),
                             {NSProcessInfo::processName(), NSProcessInfo::effectiveUserID(),
                              zandorSoftwaresExtensions::randomStringWithLength(replySuffixLength)});
        shared = initAsServerWithName(name);
        if (shared && worksForAnother) {
            const QString path = pathOfName(name);
            ownFile() = {::getpid(), path, SocketFolder::socketAt(path)};
            std::atexit(removeOwnFile);
        }
    }
    return shared;
}

QString ZDRUnixSocketPort::description() const
{
    return stringWithFormat(QStringLiteral("%ld @ %@"),
                            {_type, _portName.isNull() ? QVariant() : QVariant(_portName)});
}

QString ZDRUnixSocketPort::portName() const
{
    return _portName;
}

void ZDRUnixSocketPort::invalidate()
{
    NSSocketPort::invalidate();
    if (!_portName.isEmpty() && _type == removingType)
        SocketFolder::clearEntry(_portName);
}
