// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include <array>
#include <curl/curl.h>
#include <memory>
#include <optional>

namespace dozely
{

struct CurlEndEasy {
    void operator()(CURL *easy) const { curl_easy_cleanup(easy); }
};
struct CurlEndMulti {
    void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
};
struct CurlEndList {
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, CurlEndList>;

/// One request and its answer. The request and the options must outlive it.
class CurlExchange
{
public:
    CurlExchange(const HttpRequest &request, const CurlHttpClient::Options &options);
    ~CurlExchange();
    CurlExchange(const CurlExchange &) = delete;
    CurlExchange &operator=(const CurlExchange &) = delete;

    /// As HttpClient::send, for the one request. Once.
    Result<QByteArray> perform();

private:
    template<class Value>
    void set(CURLoption option, Value value)
    {
        m_isSet = m_isSet && curl_easy_setopt(m_easy.get(), option, value) == CURLE_OK;
    }
    void append(CurlList &list, const QByteArray &line);
    void setRequest();
    void setTransport();
    void setReceivers();
    std::optional<CURLcode> run();
    QString reason(CURLcode code) const;

    static size_t takeBody(char *data, size_t size, size_t count, void *self);
    static size_t takeHead(char *data, size_t size, size_t count, void *self);

    const HttpRequest &m_request;
    const CurlHttpClient::Options &m_options;
    CurlList m_headers; // what the handles refer to comes before them, and goes after them
    CurlList m_connectTo;
    std::array<char, CURL_ERROR_SIZE> m_error{};
    std::unique_ptr<CURL, CurlEndEasy> m_easy;
    std::unique_ptr<CURLM, CurlEndMulti> m_multi;
    QByteArray m_answer;
    qsizetype m_headSize = 0;
    QString m_refusal; // why this side ended it
    bool m_isSet = true;
};

} // namespace dozely
