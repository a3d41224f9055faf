// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminHelp.h"
#include "hosts/admin/CommandTable.h"
#include "hosts/admin/Output.h"

AdminOptions::AdminOptions() : m_options(AdminHelp::description())
{
    m_options.parser().addOptions(AdminHelp::options());
    m_options.parser().addPositionalArgument("command", "What to do, see above.", "COMMAND [ARGUMENTS]");
}

std::optional<int> AdminOptions::parse(const QStringList &arguments)
{
    if (m_options.parser().parse(arguments) && isSet("help")) {
        if (const auto *const command = CommandTable::find(this->command())) {
            Output::raw(AdminHelp::of(*command).toUtf8());
            return static_cast<int>(ExitStatus::Done);
        }
    }
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
    const auto *const rule = CommandTable::find(command());
    if (!rule)
        return QString("There is no command \"%1\"; --help shows those that there are.").arg(command());
    const qsizetype count = m_options.parser().positionalArguments().size() - 1;
    if (count < rule->fewest)
        return QString("\"%1\" needs an argument; \"%1 --help\" shows which.").arg(command());
    if (count > rule->most)
        return QString("\"%1\" takes no argument \"%2\".").arg(command(), argument(rule->most));
    for (const QCommandLineOption &option : AdminHelp::options()) {
        const QString name = option.names().constFirst();
        if (name != "host" && isSet(name) && !rule->options.contains(name))
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
