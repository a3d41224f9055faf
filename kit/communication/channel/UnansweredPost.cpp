// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/UnansweredPost_p.h"

#include "DozelyKit/communication/remoting/RemoteCall_p.h"

namespace dozely
{

using Reply = MessageStream::Reply;

std::shared_ptr<UnansweredPost> UnansweredPost::begin(const NSSocketPort &port, const QList<quint32> &trusted,
                                                      const NSNotification &notification)
{
    try {
        auto stream = MessageStream::open(port, std::chrono::milliseconds(0));
        const auto server = stream->peer();
        if (!server || !trusted.contains(server->userId))
            return nullptr;
        std::shared_ptr<UnansweredPost> post(new UnansweredPost(std::move(stream), notification));
        post->askForCenter();
        return post;
    } catch (const NSException &) {
        return nullptr;
    }
}

UnansweredPost::UnansweredPost(std::shared_ptr<MessageStream> stream, NSNotification notification)
    : m_stream(std::move(stream)), m_notification(std::move(notification))
{
}

void UnansweredPost::askForCenter()
{
    m_stream->ask({WireName::rootPath, WireName::objectInterface, "communicationCenter", {}},
                  [weak = weak_from_this()](const Reply &center) {
                      if (const auto self = weak.lock())
                          self->post(center);
                  });
}

void UnansweredPost::post(const Reply &center)
{
    const auto path = RemoteCall::objectIn(center);
    if (!path)
        return m_stream->close();
    try {
        m_stream->ask(
            {*path, WireName::objectInterface, "postNotification", {QVariant::fromValue(m_notification)}},
            [weak = weak_from_this()](const Reply &) {
                if (const auto self = weak.lock())
                    self->m_stream->close();
            });
    } catch (const NSException &) {
        m_stream->close(); // it is too large
    }
}

} // namespace dozely
