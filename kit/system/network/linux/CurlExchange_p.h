// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"
#include "DozelyKit/system/network/linux/CurlLibrary_p.h"

#include <array>
#include <memory>
#include <optional>

namespace dozely
{

struct CurlEnd {
    void operator()(CURL *easy) const { CurlLibrary::open()->easy_cleanup(easy); }
    void operator()(curl_slist *list) const { CurlLibrary::open()->slist_free_all(list); }
};
struct CurlEndMulti { // CURL and CURLM are both void
    void operator()(CURLM *multi) const { CurlLibrary::open()->multi_cleanup(multi); }
};
using CurlList = std::unique_ptr<curl_slist, CurlEnd>;

/// One request and its answer, where libcurl could be opened. Request, options and library must outlive it.
class CurlExchange
{
public:
    CurlExchange(const CurlLibrary &curl, const HttpRequest &request, const CurlHttpClient::Options &options);
    ~CurlExchange();
    CurlExchange(const CurlExchange &) = delete;
    CurlExchange &operator=(const CurlExchange &) = delete;

    /// As HttpClient::send, for the one request. Once.
    Result<QByteArray> perform();

private:
    template<class Value>
    void set(CURLoption option, Value value)
    {
        m_isSet = m_isSet && m_curl.easy_setopt(m_easy.get(), option, value) == CURLE_OK;
    }
    void append(CurlList &list, const QByteArray &line);
    void setRequest();
    void setTransport();
    void setReceivers();
    std::optional<CURLcode> run();
    QString reason(CURLcode code) const;

    static size_t takeBody(char *data, size_t size, size_t count, void *self);
    static size_t takeHead(char *data, size_t size, size_t count, void *self);

    const CurlLibrary &m_curl;
    const HttpRequest &m_request;
    const CurlHttpClient::Options &m_options;
    CurlList m_headers; // what the handles refer to comes before them, and goes after them
    CurlList m_connectTo;
    std::array<char, CURL_ERROR_SIZE> m_error{};
    std::unique_ptr<CURL, CurlEnd> m_easy;
    std::unique_ptr<CURLM, CurlEndMulti> m_multi;
    QByteArray m_answer;
    qsizetype m_headSize = 0;
    QString m_refusal; // why this side ended it
    bool m_isSet = true;
};

} // namespace dozely
