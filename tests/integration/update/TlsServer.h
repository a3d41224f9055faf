// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// An answer of the update server of a test, byte for byte, and what follows it.
struct ServerAnswer {
    QByteArray bytes;
    QByteArray then =
        "close";     ///< "close", "cut" (without the end that TLS has) or "hold" (until the client goes).
    double pace = 0; ///< Seconds between bytes; 0 for all at once.

    /// An answer with that body, complete.
    static ServerAnswer ok(const QByteArray &body, const QByteArray &status = "200 OK");
    static ServerAnswer redirection(const QByteArray &to, const QByteArray &status = "302 Found");
};

/// What the server of a test is to do, as JSON for update_server.py. `certificate` is "good", "wrong name",
/// "expired" or "stranger". The last answer is given again and again.
QByteArray serverStory(const QList<ServerAnswer> &answers, const QByteArray &certificate = "good");

/// An update server on this machine: a process with real TLS and an authority of its own. It ends with the
/// object.
class TlsServer
{
public:
    explicit TlsServer(const QList<ServerAnswer> &answers, const QByteArray &certificate = "good");
    ~TlsServer();
    TlsServer(const TlsServer &) = delete;
    TlsServer &operator=(const TlsServer &) = delete;

    /// Whether the server listens; look at it first.
    bool isRunning() const { return m_port != 0; }

    /// The certificate of the authority that it wants trusted.
    QString authority() const { return m_folder.filePath("authority.pem"); }

    /// "address:port" of the port that speaks TLS.
    QByteArray address() const { return "127.0.0.1:" + QByteArray::number(m_port); }

    /// The same of the port without TLS.
    QByteArray plainAddress() const { return "127.0.0.1:" + QByteArray::number(m_plainPort); }

    /// What the server saw.
    struct Sight {
        bool isComplete = false;    ///< Whether the server ended in order.
        QList<QByteArray> requests; ///< As they came, in order.
        QStringList refusals;       ///< Why handshakes failed.
        int plainConnections = 0;   ///< To the port without TLS.
    };

    /// Ends the server.
    Sight end();

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
    int m_plainPort = 0;
};
