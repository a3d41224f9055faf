// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/linux/ByteQuota_p.h"

#include "DozelyKit/communication/remoting/MessageStream_p.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace dozely
{

/// The streams that one thread has accepted, and what all of them may take: docs/wire-protocol.md has the
/// limits. Each stream belongs to a user, by the kernel's word.
class AcceptedStreams
{
public:
    using Stream = MessageStream::Private;

    static AcceptedStreams &ofThisThread();

    /// Makes room for one more stream of the user: at his limit his oldest one that has not identified itself
    /// goes. At the limit of all, one of whoever has most goes, for a user without a stream always, for
    /// others only when that one has at least two more: the oldest that has not identified itself, or else
    /// the oldest. Who has not identified himself is told. False when there is no room.
    bool makeRoomFor(quint32 userId);

    void add(Stream *stream, quint32 userId);
    void remove(Stream *stream, quint32 userId);

    /// Room for a message that is on its way. Who gets none is given a turn when there is some again.
    bool takeInput(Stream *stream, quint32 userId, qsizetype bytes);
    void giveInput(quint32 userId, qsizetype bytes);

    /// Room for replies that wait to be read.
    ByteQuota &output() { return m_output; }

private:
    Stream *oldestUnidentified(const std::vector<Stream *> &streams) const;
    bool makeRoomAmongAll(quint32 userId);
    void giveMemoryBackAfter(qsizetype use);

    std::map<quint32, std::vector<Stream *>> m_streams; ///< Of each user the oldest first.
    size_t m_count = 0;
    std::set<std::weak_ptr<Stream>, std::owner_less<>> m_waiting; ///< For room for a message.
    qsizetype m_used = 0; ///< Of memory, roughly, since it was last given back.
    bool m_willGiveBack = false;
    ByteQuota m_input;
    ByteQuota m_output;

public:
    AcceptedStreams();
};

} // namespace dozely
