// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminHelp.h"
#include "hosts/admin/Output.h"

#include <QHash>

namespace
{
struct Rule {
    qsizetype fewest; // arguments after the command
    qsizetype most;
    QStringList options;
};

const QHash<QString, Rule> &rules()
{
    static const QStringList describing{
        "json",  "bundle",     "program",   "argument", "date",         "time-zone", "in",    "parameter",
        "alert", "parameters", "in-daemon", "wake",     "in-session",   "power-on",  "stays", "disabled",
        "owner", "anyway",     "every",     "at",       "tell-failure", "on",        "rule",  "from",
        "until", "count",      "except",    "missed",   "overlap",      "after"};
    static const QStringList takingBack{"once",        "enabled",   "endless",        "in-default",
                                        "no-alert",    "no-except", "no-parameter",   "no-stays",
                                        "no-power-on", "no-wake",   "no-tell-failure"};
    static const QHash<QString, Rule> table{
        {"list", {0, 0, {"json"}}},
        {"add", {1, 1, describing}},
        {"change", {1, 1, describing + takingBack + QStringList{"name"}}},
        {"remove", {1, 1, {"json"}}},
        {"clean", {0, 0, {"json"}}},
        {"enable", {1, 1, {"json"}}},
        {"disable", {1, 1, {"json"}}},
        {"run", {1, 1, {"json"}}},
        {"ping", {1, 2, {"json"}}},
        {"log", {0, 0, {"json", "lines", "follow"}}},
        {"next", {0, 1, {"json", "n", "until"}}},
        {"history", {0, 1, {"json", "n"}}},
        {"skip", {1, 1, {"json", "date", "time-zone"}}},
        {"postpone", {2, 2, {"json", "date", "time-zone"}}},
        {"output", {1, 1, {"json", "date", "time-zone"}}},
        {"power", {0, 1, {"json"}}},
        {"sleep", {0, 0, {"json"}}},
        {"update", {1, 1, {"json"}}},
        {"event", {3, 3, {"json", "parameter", "parameters", "user", "timeout", "no-reply"}}},
    };
    return table;
}
} // namespace

AdminOptions::AdminOptions() : m_options(AdminHelp::description())
{
    m_options.parser().addOptions(AdminHelp::options());
    m_options.parser().addPositionalArgument("command", "What to do, see above.", "COMMAND [ARGUMENTS]");
}

std::optional<int> AdminOptions::parse(const QStringList &arguments)
{
    if (const auto status = m_options.parse(arguments))
        return status;
    const QString wrong = complaint();
    if (wrong.isEmpty())
        return {};
    Output::remark(wrong);
    return static_cast<int>(ExitStatus::BadUsage);
}

QString AdminOptions::complaint() const
{
    if (command().isEmpty())
        return "A command is missing; --help shows them.";
    const auto rule = rules().constFind(command());
    if (rule == rules().cend())
        return QString("There is no command \"%1\"; --help shows those that there are.").arg(command());
    const qsizetype count = m_options.parser().positionalArguments().size() - 1;
    if (count < rule->fewest)
        return QString("\"%1\" needs an argument; --help shows which.").arg(command());
    if (count > rule->most)
        return QString("\"%1\" takes no argument \"%2\".").arg(command(), argument(rule->most));
    for (const QCommandLineOption &option : AdminHelp::options()) {
        const QString name = option.names().constFirst();
        if (isSet(name) && !rule->options.contains(name))
            return QString("\"%1\" takes no option %2%3.")
                .arg(command(), name.size() == 1 ? "-" : "--", name);
    }
    return {};
}

bool AdminOptions::isSaid(const QString &name, const QString &opposite) const
{
    if (isSet(name) && isSet(opposite))
        refuse(QString("Say --%1 or --%2, not both.").arg(name, opposite));
    return isSet(name);
}

QString AdminOptions::command() const
{
    return m_options.parser().positionalArguments().value(0);
}

QString AdminOptions::argument(qsizetype index) const
{
    return m_options.parser().positionalArguments().value(index + 1);
}
