// SPDX-License-Identifier: MIT
#include "hosts/common/program/HostOptions.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <cstdio>

using namespace dozely;

namespace
{
void print(std::FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text), stream);
}
} // namespace

HostOptions::HostOptions(const QString &description)
    : m_root("root", "Run the system below the folder <DIR> instead of /.", "DIR"),
      m_help({"h", "help"}, "Show this help and end."),
      m_version("version", "Show the version and end.")
{
    m_parser.setApplicationDescription(description);
    m_parser.addOptions({m_root, m_help, m_version});
}

std::optional<int> HostOptions::parse(const QStringList &arguments)
{
    const bool understood = m_parser.parse(arguments);
    if (understood && m_parser.isSet(m_help)) {
        print(stdout, m_parser.helpText());
        return 0;
    }
    if (understood && m_parser.isSet(m_version)) {
        print(stdout, QString("%1 %2\n").arg(NSProcessInfo::processName(), DOZELY_VERSION));
        return 0;
    }
    QString complaint = understood ? QString() : m_parser.errorText();
    if (understood && m_parser.isSet(m_root)) {
        complaint = RootFolder::refusal(m_parser.value(m_root));
        if (complaint.isEmpty())
            RootFolder::set(m_parser.value(m_root));
    }
    if (complaint.isEmpty())
        return {};
    print(stderr, QString("%1: %2\n").arg(NSProcessInfo::processName(), complaint));
    return badUsage;
}
