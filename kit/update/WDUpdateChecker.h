// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QUrl>

#include <memory>

/// Asks the update server whether there is a newer release than the installed one. When to ask, and what to
/// show, is the caller's business; nothing is downloaded. docs/update-check.md says what goes over the wire.
///
/// THREADING: one thread at a time. BLOCKING: updateLatestVersionDictionary alone.
///
/// EXAMPLE
///     const auto checker = WDUpdateChecker::sharedInstance();
///     if (checker->updateLatestVersionDictionary() && !checker->latestVersion().isNull())
///         offer(checker->latestVersion(), checker->latestVersionURL());
class DOZELYKIT_EXPORT WDUpdateChecker
{
public:
    /// Makes the shared object when there is none.
    static void initialize();

    /// The one object of the process, made at first use. It lives until the process ends.
    static std::shared_ptr<WDUpdateChecker> sharedInstance();

    /// The shared object, made when there is none.
    static std::shared_ptr<WDUpdateChecker> init();

    ~WDUpdateChecker();
    WDUpdateChecker(const WDUpdateChecker &) = delete;
    WDUpdateChecker &operator=(const WDUpdateChecker &) = delete;

    /// The version of the application "/Applications/Dozely.app" as people call it; null when that says none.
    QString versionString() const;

    /// That version's number, by which versions are compared; 0 when the application says none. A signed
    /// number in texts.
    quint64 version() const;

    /// Both, as "3.2 (41)".
    QString fullVersionString() const;

    /// Asks the server and keeps its answer. False when the server cannot be reached (nothing is sent then),
    /// when there was no whole answer or it is not a JSON object, and in a build without the update check;
    /// one log line says so, and the earlier answer stays in use. BLOCKING: as long as the name is looked up;
    /// then until the answer is there, nothing moved for 60 s, or five minutes are over.
    bool updateLatestVersionDictionary();

    /// The latest version as people call it when it is newer than the installed one; null otherwise, and
    /// before an answer. A stranger's text: show it, escaped where that matters, and do nothing else with it.
    QString latestVersion() const;

    /// Where the latest version is to be had, newer or not; invalid when the answer does not say, and before
    /// an answer. A stranger's address, of any scheme: offer only "https" for opening.
    QUrl latestVersionURL() const;

private:
    WDUpdateChecker();
    struct Private;
    std::unique_ptr<Private> d;
};
