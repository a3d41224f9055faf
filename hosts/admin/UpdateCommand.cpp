// SPDX-License-Identifier: MIT
#include "hosts/admin/UpdateCommand.h"

#include "DozelyKit/update/UpdateServer.h"
#include "DozelyKit/update/WDUpdateChecker.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
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
        finding.installed.isNull() ? AdminText::tr("not known") : Output::escaped(finding.installed);
    const QString latest = finding.isNewer() ? Output::escaped(finding.latest)
                                             : AdminText::tr("%1, up to date", "a version").arg(installed);
    const QString shown = Output::escaped(finding.addressText());
    const QString address = shown.isEmpty() ? AdminText::tr("the server gives none")
                            : finding.mayBeOpened()
                                ? shown
                                : AdminText::tr("not offered, since it is not https: %1").arg(shown);
    const std::pair<QString, QString> facts[] = {{AdminText::tr("Installed version:"), installed},
                                                 {AdminText::tr("Latest version:"), latest},
                                                 {AdminText::tr("Address:"), address}};
    qsizetype width = 0;
    for (const auto &[title, text] : facts)
        width = std::max(width, DisplayWidth::of(title) + 2);
    for (const auto &[title, text] : facts)
        Output::line(DisplayWidth::padded(title, width) + text);
}
} // namespace

void UpdateCommand::run(const AdminOptions &options)
{
    if (options.argument(0) != "check")
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("\"%1\" is not check.").arg(options.argument(0)));
    if (!UpdateServer::isAsked())
        throw AdminError(ExitStatus::NoAnswer,
                         AdminText::tr("This system was built without the update check."));
    Identity::giveUpRoot(); // a stranger's answer is not for root to read
    const auto checker = WDUpdateChecker::sharedInstance();
    if (!checker->updateLatestVersionDictionary())
        throw AdminError(
            ExitStatus::NoAnswer,
            AdminText::tr("%1 gave no answer that can be used; the log says why.").arg(UpdateServer::host()));
    const Finding finding{checker->versionString().isNull() ? QString() : checker->fullVersionString(),
                          checker->latestVersion(), checker->latestVersionURL()};
    if (options.isSet("json"))
        showInJson(finding);
    else
        show(finding);
    if (finding.isNewer())
        throw AdminError(ExitStatus::NewerVersion, AdminText::tr("There is a newer version."));
}
