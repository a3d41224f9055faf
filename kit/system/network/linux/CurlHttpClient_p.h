// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/HttpClient.h"

#include <chrono>

namespace dozely
{

/// Requests over HTTPS by libcurl. Each request has a connection of its own; the proxy that the environment
/// names (https_proxy, no_proxy) is used, and sees no more than the server's name.
class DOZELYKIT_AUTOTEST_EXPORT CurlHttpClient : public HttpClient
{
public:
    struct Options {
        /// Ends a request while nothing at all moves: no name found, nothing connected, not a byte either
        /// way.
        std::chrono::milliseconds noProgress = std::chrono::seconds(60);
        /// Ends a request whatever happens.
        std::chrono::milliseconds whole = std::chrono::minutes(5);
        int redirections = 10;
        /// A file of certificates (PEM) to trust instead of the machine's; for a private authority.
        QString certificateAuthorities = {};
        /// "host:port" to connect to instead of what the address says. The server must still prove the
        /// address's name.
        QByteArray connectTo = {};
    };

    CurlHttpClient() = default;
    explicit CurlHttpClient(Options options) : m_options(std::move(options)) {}

    const Options &options() const { return m_options; }

    Result<QByteArray> send(const HttpRequest &request) override;

private:
    Options m_options;
};

} // namespace dozely
