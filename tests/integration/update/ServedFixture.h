// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"
#include "integration/update/TlsServer.h"
#include "unit/update/UpdateFixture.h"

/// The scratch system of UpdateFixture with a real server and the real transport, which trusts that server's
/// authority.
class ServedFixture : public UpdateFixture
{
protected:
    ServedFixture()
    {
        for (const char *name : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"})
            qunsetenv(name); // the server is here, whatever lies between this machine and others
    }

    void serve(const QList<ServerAnswer> &answers, const QByteArray &certificate = "good")
    {
        server = std::make_unique<TlsServer>(answers, certificate);
        ASSERT_TRUE(server->isRunning());
        options.certificateAuthorities = server->authority();
        options.connectTo = server->address();
        connectWith(options);
    }

    static void connectWith(const dozely::CurlHttpClient::Options &options)
    {
        dozely::Port<dozely::HttpClient>::current() = std::make_shared<dozely::CurlHttpClient>(options);
    }

    /// What the server saw; ends it.
    TlsServer::Sight sight()
    {
        const auto seen = server->end();
        EXPECT_TRUE(seen.isComplete);
        return seen;
    }

    dozely::CurlHttpClient::Options options;
    std::unique_ptr<TlsServer> server;
};
