// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <utility>

namespace dozely
{

/// A request over HTTPS.
struct HttpRequest {
    QUrl url; ///< Of the scheme "https".
    QByteArray method;
    QList<std::pair<QByteArray, QByteArray>> headers; ///< Name and value, sent as they stand.
    QByteArray body;
    qint64 largestAnswer = 0; ///< Bytes; an answer whose body is larger is none.
};

/// Port: requests over HTTPS.
///
/// THREADING: one thread at a time. BLOCKING: send waits for the whole answer, on the caller's thread.
class DOZELYKIT_EXPORT HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// Sends the request and returns the body of the answer, whatever the HTTP status. The server must prove
    /// that it is who the address names; redirections are followed to "https" alone. Besides the headers of
    /// the request, only "Host", "Accept", "User-Agent" and what HTTP itself needs are sent; no cookies are
    /// kept and nothing is remembered. An error, of printable characters, when there was no whole answer.
    virtual Result<QByteArray> send(const HttpRequest &request) = 0;
};

/// Null in a build without the update check.
template<>
DOZELYKIT_EXPORT std::shared_ptr<HttpClient> &Port<HttpClient>::current();

} // namespace dozely
