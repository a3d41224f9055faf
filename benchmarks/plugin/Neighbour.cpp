// SPDX-License-Identifier: MIT
//
// A plug-in that nobody wants beside his own: its action hangs, crashes, leaves processes behind, eats memory
// or writes without an end, as its parameter "Deed" says. What it leaves ends by itself.
#include <DozelyKit/plugin/WDPlugInFactory.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace
{
constexpr unsigned longest = 20;          // seconds that anything of it lives
constexpr std::size_t block = 16 << 20;   // bytes
constexpr std::size_t memory = 1 << 30;   // bytes
constexpr std::size_t output = 256 << 20; // bytes
constexpr int leftBehind = 8;             // processes

[[noreturn]] void hang()
{
    ::alarm(longest);
    for (;;)
        ::pause();
}

void forkAway()
{
    for (int i = 0; i < leftBehind; ++i) {
        if (::fork() != 0)
            continue;
        ::setsid();
        hang();
    }
}

/// Returns it at the process's end.
void eatMemory()
{
    static std::vector<std::vector<char>> eaten;
    for (std::size_t size = 0; size < memory; size += block)
        eaten.emplace_back(block, 'x');
}

void writeOn()
{
    static std::array<char, 1 << 16> line;
    line.fill('x');
    for (std::size_t size = 0; size < output; size += line.size()) {
        if (::write(STDOUT_FILENO, line.data(), line.size()) < 0)
            return;
    }
}
} // namespace

class NeighbourDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    void actInDaemon() override
    {
        const QString deed = parameters()->value("Deed").toString();
        if (deed == "hang")
            hang();
        if (deed == "crash")
            std::abort();
        if (deed == "fork")
            forkAway();
        if (deed == "memory")
            eatMemory();
        if (deed == "output")
            writeOn();
    }
};

class NeighbourFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<NeighbourDaemonPlugIn>(); }
};

#include "Neighbour.moc"
