// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/core/foundation/NSNotification.h"

#include <memory>

class NSSocketPort;

namespace dozely
{

/// A post that nobody waits for. A target that is there has it as soon as it takes it, while the event loop
/// goes on; one that does not answer has nothing of it once the object is gone.
///
/// THREADING: the main thread, whose event loop must run. BLOCKING: nothing waits.
class UnansweredPost : public std::enable_shared_from_this<UnansweredPost>
{
public:
    /// Connects to the port. Null when nobody listens there who is one of `trusted`, and when that one does
    /// not take the connection at once.
    static std::shared_ptr<UnansweredPost> begin(const NSSocketPort &port, const QList<quint32> &trusted,
                                                 const NSNotification &notification);

    /// Whether nothing more comes of it.
    bool isOver() const { return !m_stream->isOpen(); }

private:
    UnansweredPost(std::shared_ptr<MessageStream> stream, NSNotification notification);
    void askForCenter();
    void post(const MessageStream::Reply &center);

    const std::shared_ptr<MessageStream> m_stream;
    const NSNotification m_notification;
};

} // namespace dozely
