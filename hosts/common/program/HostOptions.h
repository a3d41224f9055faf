// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

/// The command line that all hosts share: `--root DIR`, `--help`, `--version`.
///
/// Needs the QCoreApplication, whose name it shows. THREADING: the head of main.
///
/// EXAMPLE
///     HostOptions options("Performs schedules.");
///     options.parser().addOption({"json", "Answer in JSON."});
///     if (const auto status = options.parse(QCoreApplication::arguments()))
///         return *status;
class HostOptions
{
public:
    /// Exit status of a command line that is wrong, a root folder that is refused included.
    static constexpr int badUsage = 2;

    /// `description` is one sentence for `--help`.
    explicit HostOptions(const QString &description);

    /// For options and arguments of the program's own, before parse and after it.
    QCommandLineParser &parser() { return m_parser; }

    /// Parses the program's `arguments` (the program first) and relocates the system as `--root` says. Absent
    /// when the program shall go on; else the status to end with: 0 after help or version was printed,
    /// badUsage after a sentence on the standard error stream.
    std::optional<int> parse(const QStringList &arguments);

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_root;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
};
