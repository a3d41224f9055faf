// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/admin/AdminText.h"

#include <QString>

#include <exception>
#include <utility>

/// How the tool ends; `--help` and docs/admin-tool.md show them.
enum class ExitStatus {
    Done = 0,
    Failed = 1,       ///< It could not be done: not found, not reachable, not readable, damaged.
    BadUsage = 2,     ///< The command line is wrong.
    NotPermitted = 3, ///< The caller may not do this.
    NewerVersion = 4, ///< update check: there is a newer version.
    Changed = 4,      ///< apply: schedules were changed. Not 2: a typing error must not look like success.
    NoAnswer = 5,     ///< update check: it could not be found out whether there is one.
};

/// Ends a command: the status and one sentence for the person; none where what was printed says it all.
class AdminError : public std::exception
{
public:
    AdminError(ExitStatus status, QString sentence)
        : m_status(status), m_sentence(std::move(sentence)), m_what(m_sentence.toUtf8())
    {
    }

    ExitStatus status() const { return m_status; }
    QString sentence() const { return m_sentence; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    ExitStatus m_status;
    QString m_sentence;
    QByteArray m_what;
};

/// Ends a command whose line is wrong, with one sentence for the person.
[[noreturn]] inline void refuse(const QString &sentence)
{
    throw AdminError(ExitStatus::BadUsage, sentence);
}

/// The value; where there is none the reason, a clause, ends the command as refuse does.
template<class Value>
Value accepted(dozely::Result<Value> value)
{
    if (!value)
        refuse(AdminText::sentence(AdminText::reason(value.error())));
    return *std::move(value);
}
