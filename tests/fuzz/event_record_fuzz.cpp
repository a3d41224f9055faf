// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/linux/EventProcessRecord_p.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

#include <QtEndian>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr char folderPath[] = "/events";

/// Another process, which holds the lock on one file for as long as this one lives.
class Holder
{
public:
    explicit Holder(const QByteArray &file)
    {
        int ready[2];
        REQUIRE(::pipe(ready) == 0);
        m_process = ::fork();
        REQUIRE(m_process >= 0);
        if (m_process == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            const int descriptor = ::open(file.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
            struct flock lock {
            };
            lock.l_type = F_WRLCK;
            lock.l_whence = SEEK_SET;
            const bool isHeld = ::fcntl(descriptor, F_SETLK, &lock) == 0;
            if (::write(ready[1], isHeld ? "y" : "n", 1) != 1)
                ::_exit(1);
            for (;;)
                ::pause();
        }
        char answer = 'n';
        REQUIRE(::read(ready[0], &answer, 1) == 1 && answer == 'y');
        ::close(ready[0]);
        ::close(ready[1]);
    }

    qint32 process() const { return m_process; }

private:
    pid_t m_process = -1;
};

struct Setting {
    Setting()
    {
        system.makeFolder(folderPath);
        file = QFile::encodeName(system.path("/held"));
        holder = std::make_unique<Holder>(file);
        folder = ::open(QFile::encodeName(system.path(folderPath)).constData(),
                        O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        REQUIRE(folder >= 0);
    }

    FuzzedSystem system;
    QByteArray file; ///< The one whose lock the other process holds.
    std::unique_ptr<Holder> holder;
    int folder = -1;
};

/// A record's name, or nearly one.
QByteArray someName(Steer &steer, qint32 process)
{
    QByteArray name = steer.oneOf<QByteArray>({"", "0", "+", "-", " "}).left(steer.below(8) == 0 ? 1 : 0);
    name += QByteArray::number(steer.below(4) == 0 ? static_cast<qint32>(steer.number()) : process);
    name += steer.below(8) == 0 ? steer.bytes(4) : QByteArray("-");
    name += QByteArray("0123456789abcdef").left(steer.below(8) == 0 ? steer.below(17) : 16);
    if (steer.below(8) == 0)
        name += steer.bytes(8);
    if (steer.below(16) == 0)
        name = steer.bytes(64);
    name.replace('\0', 'x').replace('/', 'y');
    return name == "." || name == ".." || name.isEmpty() ? QByteArray("none") : name;
}

bool isRecordName(const QByteArray &name, qint32 process)
{
    const QByteArray head = QByteArray::number(process) + '-';
    return name.startsWith(head) && name.size() == head.size() + 16;
}
} // namespace

/// The folder of those who use Apple events, which anybody may write: names, contents and kinds of files as
/// the input has them, and a process that holds the lock of some. A record counts exactly when its name, its
/// lock and its content are those of one process.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Setting setting;
    const qint32 process = setting.holder->process();
    Steer steer(data, size);
    QByteArrayList kept;
    QByteArrayList swept;
    for (int left = 1 + steer.below(5); left > 0; --left) {
        const QByteArray name = someName(steer, process);
        const QByteArray path = QFile::encodeName(setting.system.path(folderPath)) + '/' + name;
        if (::faccessat(setting.folder, name.constData(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
            continue;
        QByteArray content("DZE\1", 4);
        content += steer.bytes(8);
        if (steer.below(8) == 0)
            content = steer.bytes(16);
        const bool isHeld = steer.flag();
        const bool isLink = !isHeld && steer.below(8) == 0;
        const QByteArray target = isHeld ? setting.file : path;
        if (isHeld)
            REQUIRE(::link(setting.file.constData(), path.constData()) == 0);
        if (isLink) {
            REQUIRE(::symlink(setting.file.constData(), path.constData()) == 0);
        } else {
            const int file = ::open(target.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
            REQUIRE(file >= 0);
            REQUIRE(::write(file, content.constData(), static_cast<size_t>(content.size())) ==
                    content.size());
            ::close(file);
        }
        const auto identifier = EventProcessRecord::identifierIn(name);
        REQUIRE(!identifier || (*identifier > 0 && isRecordName(name, *identifier)));
        const auto read = EventProcessRecord::read(setting.folder, name);
        const bool counts = isHeld && isRecordName(name, process) && content.size() >= 8 &&
                            content.startsWith(QByteArray("DZE\1", 4));
        REQUIRE(read.has_value() == counts);
        if (read) {
            REQUIRE(read->identifier == process && read->userId == ::geteuid());
            REQUIRE(read->signature == qFromBigEndian<OSType>(content.constData() + 4));
        }
        const bool isForgotten = identifier && *identifier != ::getpid() && !isHeld && !isLink;
        (isForgotten ? swept : kept) += name;
    }
    EventProcessRecord::sweep(setting.folder);
    for (const QByteArray &name : std::as_const(kept))
        REQUIRE(::unlinkat(setting.folder, name.constData(), 0) == 0);
    for (const QByteArray &name : std::as_const(swept))
        REQUIRE(::unlinkat(setting.folder, name.constData(), 0) != 0 && errno == ENOENT);
    return 0;
}
