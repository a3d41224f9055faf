// SPDX-License-Identifier: MIT
#include "support/BaselineText.h"

#include <QDir>
#include <QFile>

namespace
{
constexpr int mostLines = 12; // that are told

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) == text.toUtf8().size();
}

/// The lines from where two texts begin to differ to where they agree again at the end.
QString difference(const QStringList &expected, const QStringList &actual)
{
    const qsizetype shorter = qMin(expected.size(), actual.size());
    qsizetype begin = 0;
    while (begin < shorter && expected[begin] == actual[begin])
        ++begin;
    qsizetype same = 0;
    while (same < shorter - begin && expected[expected.size() - 1 - same] == actual[actual.size() - 1 - same])
        ++same;
    const auto part = [&](const QStringList &lines, const QString &mark) {
        QString result;
        const QStringList others = lines.mid(begin, lines.size() - same - begin);
        for (const QString &line : others.mid(0, mostLines))
            result += mark + line + '\n';
        return result + (others.size() > mostLines ? mark + "...\n" : QString());
    };
    return QString("from line %1:\n").arg(begin + 1) + part(expected, "- ") + part(actual, "+ ");
}
} // namespace

testing::AssertionResult readsLikeBaseline(const QString &text, const QString &name)
{
    const QString path = QString(DOZELY_TEST_BASELINE "/%1.txt").arg(name);
    if (qEnvironmentVariable("DOZELY_WRITE_BASELINE") == "1") {
        const bool written = write(path, text);
        return testing::AssertionFailure() << (written ? "written: " : "cannot write ") << qPrintable(path);
    }
    QFile reference(path);
    if (!reference.open(QIODevice::ReadOnly))
        return testing::AssertionFailure() << "there is no reference " << qPrintable(path);
    const QString expected = QString::fromUtf8(reference.readAll());
    if (expected == text)
        return testing::AssertionSuccess();
    const QDir folder("baseline-failures");
    folder.mkpath(".");
    const QString actual = folder.absoluteFilePath(name + ".txt");
    write(actual, text);
    return testing::AssertionFailure() << qPrintable(actual) << " is another than " << qPrintable(path) << ' '
                                       << qPrintable(difference(expected.split('\n'), text.split('\n')));
}
