// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/program/HostOptions.h"

/// The tool's command line: which commands there are, which options and arguments each takes.
class AdminOptions
{
public:
    AdminOptions();

    /// As HostOptions::parse; a command that does not exist, an option that does not belong to the command
    /// and a wrong number of arguments are bad usage too.
    std::optional<int> parse(const QStringList &arguments);

    /// One of those that `--help` shows.
    QString command() const;

    /// The command's own argument; null when there are not so many.
    QString argument(qsizetype index) const;

    bool isSet(const QString &option) const { return m_options.parser().isSet(option); }
    QString value(const QString &option) const { return m_options.parser().value(option); }
    QStringList values(const QString &option) const { return m_options.parser().values(option); }

    /// Whether an option is set. Raises AdminError when the one that excludes it is, too.
    bool isSaid(const QString &name, const QString &opposite) const;

private:
    QString complaint() const;

    mutable HostOptions m_options;
};
