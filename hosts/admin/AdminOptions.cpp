// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminOptions.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminHelp.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/CommandTable.h"
#include "hosts/admin/OptionTable.h"
#include "hosts/admin/Output.h"

AdminOptions::AdminOptions() : m_options({})
{
    m_options.parser().addOptions(OptionTable::forParser());
}

std::optional<int> AdminOptions::parse(const QStringList &arguments)
{
    if (m_options.parser().parse(arguments) && isSet("help")) {
        const auto *const command = CommandTable::find(this->command());
        Output::raw((command ? AdminHelp::of(*command) : AdminHelp::ofTool()).toUtf8());
        return static_cast<int>(ExitStatus::Done);
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
        return AdminText::tr("A command is missing; --help shows them.");
    const auto *const rule = CommandTable::find(command());
    if (!rule)
        return AdminText::tr("There is no command \"%1\"; --help shows those that there are.").arg(command());
    const qsizetype count = m_options.parser().positionalArguments().size() - 1;
    if (count < rule->fewest)
        return AdminText::tr("\"%1\" needs an argument; \"%1 --help\" shows which.").arg(command());
    if (count > rule->most)
        return AdminText::tr("\"%1\" takes no argument \"%2\".").arg(command(), argument(rule->most));
    for (const OptionTable::Option &option : OptionTable::all()) {
        if (option.name != "host" && isSet(option.name) && !rule->options.contains(option.name))
            return AdminText::tr("\"%1\" takes no option %2.").arg(command(), option.dashed());
    }
    return {};
}

bool AdminOptions::isSaid(const QString &name, const QString &opposite) const
{
    if (isSet(name) && isSet(opposite))
        refuse(AdminText::tr("Say --%1 or --%2, not both.").arg(name, opposite));
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
