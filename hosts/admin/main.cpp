// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "hosts/admin/AddCommand.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/ChangeCommand.h"
#include "hosts/admin/ChannelCommands.h"
#include "hosts/admin/CleanCommand.h"
#include "hosts/admin/EventCommand.h"
#include "hosts/admin/HistoryCommand.h"
#include "hosts/admin/ListCommand.h"
#include "hosts/admin/LogCommand.h"
#include "hosts/admin/NextCommand.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/OutputCommand.h"
#include "hosts/admin/PowerCommand.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/admin/UpdateCommand.h"

#include <QCoreApplication>
#include <QHash>

#include <functional>

namespace
{
using Command = std::function<void(const AdminOptions &)>;

const QHash<QString, Command> &commands()
{
    static const QHash<QString, Command> table{
        {"list", ListCommand::run},        {"add", AddCommand::run},
        {"change", ChangeCommand::run},    {"remove", StoreCommands::remove},
        {"enable", StoreCommands::enable}, {"disable", StoreCommands::disable},
        {"next", NextCommand::run},        {"history", HistoryCommand::run},
        {"skip", ChannelCommands::skip},   {"postpone", ChannelCommands::postpone},
        {"run", ChannelCommands::run},     {"ping", ChannelCommands::ping},
        {"clean", CleanCommand::run},      {"log", LogCommand::run},
        {"output", OutputCommand::run},    {"power", PowerCommand::run},
        {"sleep", PowerCommand::sleep},    {"update", UpdateCommand::run},
        {"event", EventCommand::run},
    };
    return table;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    NSProcessInfo::setProcessName("Dozely Admin");
    try {
        AdminOptions options;
        if (const auto status = options.parse(QCoreApplication::arguments()))
            return *status;
        commands().value(options.command())(options);
        return static_cast<int>(ExitStatus::Done);
    } catch (const AdminError &error) {
        Output::remark(error.sentence());
        return static_cast<int>(error.status());
    } catch (const std::exception &error) {
        Output::remark(QString("The command failed: %1").arg(QString::fromUtf8(error.what())));
        return static_cast<int>(ExitStatus::Failed);
    }
}
