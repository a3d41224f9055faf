// SPDX-License-Identifier: MIT
#include "hosts/common/words/ReasonWords.h"

#include "hosts/common/words/KnownReasons.h"

#include <QRegularExpression>

#include <vector>

using namespace dozely;

namespace
{
constexpr qsizetype longest = 4096; // of a text that is looked at; what a stranger writes may be long
constexpr int deepest = 4;          // reasons within reasons

struct Pattern {
    QRegularExpression expression;
    QList<int> numbers; ///< Of what is filled in, in its order.
    const KnownReasons::Reason *reason;
};

Pattern patternOf(const KnownReasons::Reason &reason)
{
    static const QRegularExpression place("%(\\d)");
    const QString text = QString::fromUtf8(reason.text);
    Pattern pattern{{}, {}, &reason};
    QString expression;
    qsizetype end = 0;
    for (const auto &match : place.globalMatch(text)) {
        expression += QRegularExpression::escape(text.mid(end, match.capturedStart() - end)) + "(.+?)";
        pattern.numbers += match.capturedView(1).toInt();
        end = match.capturedEnd();
    }
    expression += QRegularExpression::escape(text.mid(end));
    pattern.expression = QRegularExpression(QRegularExpression::anchoredPattern(expression),
                                            QRegularExpression::DotMatchesEverythingOption);
    return pattern;
}

const std::vector<Pattern> &patterns()
{
    static const std::vector<Pattern> made = [] {
        std::vector<Pattern> patterns;
        for (const KnownReasons::Reason &reason : KnownReasons::all())
            patterns.push_back(patternOf(reason));
        return patterns;
    }();
    return made;
}

QString withFirst(QString text, QChar first)
{
    text[0] = first;
    return text;
}
} // namespace

std::optional<QString> ReasonWords::known(const QString &reason, int depth)
{
    for (const Pattern &pattern : patterns()) {
        const QRegularExpressionMatch match = pattern.expression.match(reason);
        if (!match.hasMatch())
            continue;
        QString words = tr(pattern.reason->text);
        if (pattern.numbers.isEmpty())
            return words;
        // At once, since what is filled in may look like a place for more.
        QStringList filled(10);
        for (int place = 0; place < pattern.numbers.size(); ++place) {
            const int number = pattern.numbers.at(place);
            const QString said = match.captured(place + 1);
            const bool isReason = pattern.reason->firstReason > 0 && number >= pattern.reason->firstReason;
            filled[number] = isReason && depth < deepest ? known(said, depth + 1).value_or(said) : said;
        }
        static const QRegularExpression place("%(\\d)");
        QString all;
        qsizetype end = 0;
        for (const auto &found : place.globalMatch(words)) {
            all += words.mid(end, found.capturedStart() - end) + filled.at(found.capturedView(1).toInt());
            end = found.capturedEnd();
        }
        return all + words.mid(end);
    }
    return {};
}

QString ReasonWords::of(const QString &reason)
{
    if (reason.isEmpty() || reason.size() > longest)
        return reason;
    if (const auto words = known(reason, 0))
        return *words;
    // A clause that was made a sentence.
    if (!reason.endsWith('.') || reason.size() < 2)
        return reason;
    const QString clause = reason.chopped(1);
    auto words = known(clause, 0);
    if (!words)
        words = known(withFirst(clause, clause.at(0).toLower()), 0);
    if (!words || words->isEmpty())
        return reason;
    return tr("%1.", "a clause as a sentence").arg(withFirst(*words, words->at(0).toUpper()));
}

QString ReasonWords::of(const Error &error)
{
    const auto is = [&error](const char *name) {
        return error.name == QByteArray("org.freedesktop.DBus.Error.") + name;
    };
    if (is("ServiceUnknown") || is("NameHasNoOwner"))
        return tr("The Dozely service is not running.");
    if (is("NoReply") || is("Timeout") || is("TimedOut"))
        return tr("The Dozely service did not answer in time.");
    if (is("NoServer") || is("Disconnected"))
        return tr("The message bus is not there.");
    return of(error.text);
}
