// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/CommandTable.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/RemoteHost.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    NSProcessInfo::setProcessName("Dozely Admin");
    AdminText::install(QCoreApplication::arguments());
    try {
        AdminOptions options;
        if (const auto status = options.parse(QCoreApplication::arguments()))
            return *status;
        if (options.isSet("host"))
            return RemoteHost::run(options.value("host"), QCoreApplication::arguments().mid(1));
        CommandTable::find(options.command())->run(options);
        return static_cast<int>(ExitStatus::Done);
    } catch (const AdminError &error) {
        if (!error.sentence().isEmpty())
            Output::remark(error.sentence());
        return static_cast<int>(error.status());
    } catch (const std::exception &error) {
        Output::remark(AdminText::tr("The command failed: %1").arg(QString::fromUtf8(error.what())));
        return static_cast<int>(ExitStatus::Failed);
    }
}
