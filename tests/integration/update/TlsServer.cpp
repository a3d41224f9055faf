// SPDX-License-Identifier: MIT
#include "integration/update/TlsServer.h"

#include "DozelyKit/update/UpdateServer.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace dozely;

namespace
{
constexpr int patience = 60'000; // milliseconds; only bounds a failing test
}

ServerAnswer ServerAnswer::ok(const QByteArray &body, const QByteArray &status)
{
    return {"HTTP/1.1 " + status + "\r\nContent-Type: application/json\r\nContent-Length: " +
            QByteArray::number(body.size()) + "\r\n\r\n" + body};
}

ServerAnswer ServerAnswer::redirection(const QByteArray &to, const QByteArray &status)
{
    return {"HTTP/1.1 " + status + "\r\nLocation: " + to +
            "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"};
}

QByteArray serverStory(const QList<ServerAnswer> &answers, const QByteArray &certificate)
{
    QJsonArray list;
    for (const ServerAnswer &answer : answers)
        list += QJsonObject{{"bytes", QString::fromLatin1(answer.bytes.toBase64())},
                            {"then", QString::fromLatin1(answer.then)},
                            {"pace", answer.pace}};
    return QJsonDocument(QJsonObject{{"host", UpdateServer::host()},
                                     {"certificate", QString::fromLatin1(certificate)},
                                     {"answers", list}})
        .toJson();
}

TlsServer::TlsServer(const QList<ServerAnswer> &answers, const QByteArray &certificate)
{
    QFile story(m_folder.filePath("story.json"));
    if (!story.open(QIODevice::WriteOnly))
        return;
    story.write(serverStory(answers, certificate));
    story.close();
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(PYTHON, {"-B", UPDATE_SERVER, m_folder.path(), story.fileName()});
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) {
    }
    const QJsonObject ports = QJsonDocument::fromJson(m_process.readLine()).object();
    m_port = ports["port"].toInt();
    m_plainPort = ports["plainPort"].toInt();
}

TlsServer::~TlsServer()
{
    if (m_process.state() != QProcess::NotRunning)
        end();
}

TlsServer::Sight TlsServer::end()
{
    m_process.closeWriteChannel();
    Sight sight;
    sight.isComplete = m_process.waitForFinished(patience) &&
                       m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    if (!sight.isComplete)
        m_process.kill();
    m_port = 0;
    const QJsonObject seen = QJsonDocument::fromJson(m_process.readLine()).object();
    for (const auto &request : seen["requests"].toArray())
        sight.requests += QByteArray::fromBase64(request.toString().toLatin1());
    for (const auto &refusal : seen["refusals"].toArray())
        sight.refusals += refusal.toString();
    sight.plainConnections = seen["plain"].toInt(-1);
    return sight;
}
