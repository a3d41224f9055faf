// SPDX-License-Identifier: MIT
#include "hosts/admin/RemoteHost.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminText.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace
{
constexpr int sshFailed = 255; // ssh(1)

/// A word for the shell on the other side.
QString quoted(QString word)
{
    static const QRegularExpression plain(R"(\A[A-Za-z0-9_./:=@%+,-]+\z)");
    if (plain.match(word).hasMatch())
        return word;
    return "'" + word.replace("'", R"('\'')") + "'";
}

/// The place of the file that "apply" reads; -1 for another command, or its standard input.
qsizetype placeOfFile(const QStringList &arguments)
{
    static const QStringList withValue{"--spread", "--root"};
    bool isApply = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (withValue.contains(arguments.at(i)))
            ++i;
        else if (arguments.at(i).startsWith('-'))
            continue;
        else if (isApply)
            return i;
        else if (arguments.at(i) != "apply")
            return -1;
        else
            isApply = true;
    }
    return -1;
}

QStringList withoutHost(const QStringList &arguments)
{
    QStringList rest;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments.at(i) == "--host")
            ++i;
        else if (!arguments.at(i).startsWith("--host="))
            rest += arguments.at(i);
    }
    return rest;
}
} // namespace

QStringList RemoteHost::commandFor(const QString &host, const QStringList &arguments)
{
    // It would be an option of ssh's, or two words.
    static const QRegularExpression form(R"(\A[A-Za-z0-9_][^\s\x00-\x1f\x7f]*\z)");
    if (!form.match(host).hasMatch())
        refuse(AdminText::tr("\"%1\" is not a machine such as root@example.org.").arg(host));
    QStringList words{"dozely-admin"};
    for (const QString &argument : arguments)
        words += quoted(argument);
    return {"-x", "-T", "--", host, words.join(' ')};
}

int RemoteHost::run(const QString &host, const QStringList &arguments)
{
    QStringList rest = withoutHost(arguments);
    QProcess ssh;
    ssh.setProcessChannelMode(QProcess::ForwardedChannels);
    const qsizetype file = placeOfFile(rest);
    if (file >= 0) {
        if (QFile readable(rest.at(file)); !readable.open(QIODevice::ReadOnly))
            throw AdminError(
                ExitStatus::Failed,
                AdminText::tr("%1 cannot be read: %2.").arg(rest.at(file), readable.errorString()));
        ssh.setStandardInputFile(rest.at(file));
        rest[file] = "-";
    } else {
        ssh.setInputChannelMode(QProcess::ForwardedInputChannel);
    }
    ssh.start("ssh", commandFor(host, rest));
    if (!ssh.waitForStarted())
        throw AdminError(ExitStatus::Failed, AdminText::tr("ssh cannot be run: %1.").arg(ssh.errorString()));
    ssh.waitForFinished(-1);
    if (ssh.exitStatus() != QProcess::NormalExit || ssh.exitCode() == sshFailed)
        throw AdminError(ExitStatus::Failed, AdminText::tr("%1 cannot be reached by ssh.").arg(host));
    return ssh.exitCode();
}
