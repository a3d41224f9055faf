// SPDX-License-Identifier: MIT
#include "hosts/admin/UpdateCommand.h"

#include "DozelyKit/update/UpdateServer.h"
#include "DozelyKit/update/WDUpdateChecker.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"

using namespace dozely;

namespace
{
/// What the server said and what it means here. Its texts are a stranger's.
struct Finding {
    QString installed; // as "3.2 (41)"; null when it is not known
    QString latest;    // the newer version; null when the installed one is the latest
    QUrl address;

    bool isNewer() const { return !latest.isNull(); }
    /// Only an address that proves who answers is offered for opening.
    bool mayBeOpened() const
    {
        return address.isValid() && address.scheme() == "https" && !address.host().isEmpty();
    }
    /// With foreign letters encoded, which could look like others.
    QString addressText() const { return QString::fromLatin1(address.toEncoded()); }
};

void showInJson(const Finding &finding)
{
    const auto textOrNull = [](const QString &text) {
        return text.isEmpty() ? QVariant::fromValue(nullptr) : QVariant(text);
    };
    Output::json({{"installed", textOrNull(finding.installed)},
                  {"latest", textOrNull(finding.latest)},
                  {"isNewer", finding.isNewer()},
                  {"address", textOrNull(finding.addressText())},
                  {"mayBeOpened", finding.mayBeOpened()}});
}

void show(const Finding &finding)
{
    const QString installed =
        finding.installed.isNull() ? QString("not known") : Output::escaped(finding.installed);
    Output::line("Installed version:  " + installed);
    Output::line("Latest version:     " +
                 (finding.isNewer() ? Output::escaped(finding.latest) : installed + ", up to date"));
    const QString address = finding.addressText();
    if (address.isEmpty())
        Output::line("Address:            the server gives none");
    else if (finding.mayBeOpened())
        Output::line("Address:            " + Output::escaped(address));
    else
        Output::line("Address:            not offered, since it is not https: " + Output::escaped(address));
}
} // namespace

void UpdateCommand::run(const AdminOptions &options)
{
    if (options.argument(0) != "check")
        throw AdminError(ExitStatus::BadUsage, QString("\"%1\" is not check.").arg(options.argument(0)));
    if (!UpdateServer::isAsked())
        throw AdminError(ExitStatus::NoAnswer, "This system was built without the update check.");
    Identity::giveUpRoot(); // a stranger's answer is not for root to read
    const auto checker = WDUpdateChecker::sharedInstance();
    if (!checker->updateLatestVersionDictionary())
        throw AdminError(
            ExitStatus::NoAnswer,
            QString("%1 gave no answer that can be used; the log says why.").arg(UpdateServer::host()));
    const Finding finding{checker->versionString().isNull() ? QString() : checker->fullVersionString(),
                          checker->latestVersion(), checker->latestVersionURL()};
    if (options.isSet("json"))
        showInJson(finding);
    else
        show(finding);
    if (finding.isNewer())
        throw AdminError(ExitStatus::NewerVersion, "There is a newer version.");
}
