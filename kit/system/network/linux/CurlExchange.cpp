// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/CurlExchange_p.h"

#include "DozelyKit/core/log/LogLabel.h"

#include <algorithm>
#include <climits>

namespace dozely
{

namespace
{
using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

// Attack: header lines without end, which libcurl keeps. Counted over all redirections.
constexpr qsizetype largestHead = 256 << 10;
constexpr qsizetype longestReason = 197; // characters, and three dots
} // namespace

CurlExchange::CurlExchange(const CurlLibrary &curl, const HttpRequest &request,
                           const CurlHttpClient::Options &options)
    : m_curl(curl),
      m_request(request),
      m_options(options),
      m_easy(curl.easy_init()),
      m_multi(curl.multi_init())
{
    if (!m_easy || !m_multi)
        return;
    setRequest();
    setTransport();
    setReceivers();
}

CurlExchange::~CurlExchange()
{
    if (m_easy && m_multi)
        m_curl.multi_remove_handle(m_multi.get(), m_easy.get());
}

void CurlExchange::append(CurlList &list, const QByteArray &line)
{
    curl_slist *longer = m_curl.slist_append(list.get(), line.constData());
    m_isSet = m_isSet && longer;
    if (longer) {
        (void)list.release(); // it is the head of the longer one
        list.reset(longer);
    }
}

void CurlExchange::setRequest()
{
    set(CURLOPT_URL, m_request.url.toEncoded().constData());
    if (m_request.method == "POST") {
        set(CURLOPT_POST, 1L); // not CURLOPT_CUSTOMREQUEST, which would be repeated after a redirection
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_request.body.size()));
        set(CURLOPT_POSTFIELDS, m_request.body.constData());
    } else if (m_request.method != "GET") {
        m_isSet = false;
    }
    for (const auto &[name, value] : m_request.headers) {
        // libcurl counts the body itself, and leaves the header out where a redirection drops the body.
        if (name.compare("Content-Length", Qt::CaseInsensitive) != 0)
            append(m_headers, name + ": " + value);
    }
    append(m_headers, "Expect:"); // the body goes with the head
    set(CURLOPT_HTTPHEADER, m_headers.get());
    set(CURLOPT_USERAGENT, "DozelyKit/" DOZELY_VERSION);
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
}

void CurlExchange::setTransport()
{
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_PROTOCOLS_STR, "https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, static_cast<long>(m_options.redirections));
    set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L); // a redirection is to bring no credentials along
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    if (!m_options.certificateAuthorities.isEmpty()) {
        set(CURLOPT_CAINFO, m_options.certificateAuthorities.toLocal8Bit().constData());
        set(CURLOPT_CAPATH, static_cast<char *>(nullptr));
    }
    if (!m_options.connectTo.isEmpty()) {
        append(m_connectTo, "::" + m_options.connectTo);
        set(CURLOPT_CONNECT_TO, m_connectTo.get());
    }
    // Shared by libcurl among the addresses of a name, so that a dead one leaves time for the next.
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_options.noProgress.count()));
}

void CurlExchange::setReceivers()
{
    set(CURLOPT_ERRORBUFFER, m_error.data());
    set(CURLOPT_WRITEFUNCTION, &CurlExchange::takeBody);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_HEADERFUNCTION, &CurlExchange::takeHead);
    set(CURLOPT_HEADERDATA, this);
}

size_t CurlExchange::takeBody(char *data, size_t size, size_t count, void *self)
{
    auto *exchange = static_cast<CurlExchange *>(self);
    const auto length = static_cast<qsizetype>(size) * static_cast<qsizetype>(count);
    if (length > exchange->m_request.largestAnswer - exchange->m_answer.size()) {
        exchange->m_refusal =
            QString("the answer is larger than %1 bytes").arg(exchange->m_request.largestAnswer);
        return 0; // ends the transfer
    }
    exchange->m_answer.append(data, length);
    return size * count;
}

size_t CurlExchange::takeHead(char *, size_t size, size_t count, void *self)
{
    auto *exchange = static_cast<CurlExchange *>(self);
    exchange->m_headSize += static_cast<qsizetype>(size) * static_cast<qsizetype>(count);
    if (exchange->m_headSize > largestHead) {
        exchange->m_refusal = QString("the answer's head is larger than %1 bytes").arg(largestHead);
        return 0;
    }
    return size * count;
}

/// How the transfer ended; absent when this side ended it.
std::optional<CURLcode> CurlExchange::run()
{
    const auto end = SteadyClock::now() + m_options.whole;
    auto stalled = SteadyClock::now() + m_options.noProgress;
    for (;;) {
        int running = 0;
        if (m_curl.multi_perform(m_multi.get(), &running) != CURLM_OK)
            return CURLE_FAILED_INIT;
        if (running == 0)
            break;
        const auto left = std::chrono::ceil<milliseconds>(std::min(end, stalled) - SteadyClock::now());
        if (left <= milliseconds::zero()) {
            m_refusal = end <= stalled ? "it took too long" : "nothing moved for too long";
            return std::nullopt;
        }
        int active = 0;
        const auto wait = std::min<milliseconds::rep>(left.count(), INT_MAX);
        if (m_curl.multi_poll(m_multi.get(), nullptr, 0, static_cast<int>(wait), &active) != CURLM_OK)
            return CURLE_FAILED_INIT;
        // A socket with something to read or with room to write, after all of that was used up: things move.
        if (active > 0)
            stalled = SteadyClock::now() + m_options.noProgress;
    }
    int left = 0;
    const CURLMsg *message = m_curl.multi_info_read(m_multi.get(), &left);
    return message && message->msg == CURLMSG_DONE ? message->data.result : CURLE_FAILED_INIT;
}

/// Some of libcurl's sentences quote the server.
QString CurlExchange::reason(CURLcode code) const
{
    if (!m_refusal.isEmpty())
        return m_refusal;
    const QString text =
        QString::fromUtf8(m_error.front() != '\0' ? m_error.data() : m_curl.easy_strerror(code)).simplified();
    return logLabel(text, longestReason, LineBreaks::QuestionMarks);
}

Result<QByteArray> CurlExchange::perform()
{
    std::optional<CURLcode> code = CURLE_FAILED_INIT;
    if (m_easy && m_multi && m_isSet && m_curl.multi_add_handle(m_multi.get(), m_easy.get()) == CURLM_OK)
        code = run();
    if (code == CURLE_OK)
        return m_answer;
    return Error{reason(code.value_or(CURLE_ABORTED_BY_CALLBACK))};
}

} // namespace dozely
