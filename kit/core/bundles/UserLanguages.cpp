// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"

#include <QLocale>

using namespace dozely;

namespace
{
/// The languages that were set; empty for those of the user's locale.
QStringList &chosen()
{
    static QStringList languages;
    return languages;
}

/// The plain locale stands for no language.
bool isPlain(const QString &tag)
{
    return tag == u"C" || tag.startsWith(u"C.") || tag == u"POSIX";
}
} // namespace

QStringList UserLanguages::current()
{
    const QStringList languages = chosen().isEmpty() ? QLocale::system().uiLanguages() : chosen();
    QStringList expanded;
    for (QString tag : languages) {
        if (isPlain(tag))
            continue;
        tag.replace('_', '-');
        // "zh-Hant-TW", then "zh-Hant", then "zh".
        for (qsizetype end = tag.size(); end > 0; end = tag.lastIndexOf('-', end - 1)) {
            if (!expanded.contains(tag.first(end)))
                expanded += tag.first(end);
        }
    }
    return expanded;
}

void UserLanguages::set(const QStringList &languages)
{
    chosen() = languages;
}
