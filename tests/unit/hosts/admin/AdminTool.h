// SPDX-License-Identifier: MIT
#pragma once

#include "support/ScratchRoot.h"

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

/// The administration tool as a real process below a scratch root, which also holds the bundle "Command". The
/// event loop of the test runs meanwhile. The program and its library lie in the scratch root, where any user
/// can run them.
class AdminTool
{
public:
    struct Result {
        int status = -1; ///< -1 when it did not end by itself.
        QByteArray output;
        QByteArray errors;
        QJsonObject json() const; ///< The output, when it is exactly one JSON object on one line.
    };
    static constexpr unsigned otherUser = 65534;

    AdminTool();

    Result run(const QStringList &arguments, bool asOtherUser = false);

    /// Makes `process` ready to run the tool.
    void prepare(QProcess &process, const QStringList &arguments) const;

    /// Adds a schedule and returns its identifier.
    QString add(const QString &name, const QStringList &more = {});

    QString storePath() const { return root.join("/Library/Preferences/com.dozely.plist"); }
    QByteArray store() const;
    void writeStore(const QByteArray &content) const;

    ScratchRoot root;
    QString locale = "C.UTF-8"; ///< In which the tool is run.
    QString languages;          ///< LANGUAGE.
};
