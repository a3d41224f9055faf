// SPDX-License-Identifier: MIT
#include "hosts/admin/ParameterOptions.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"

#include <QRegularExpression>

#include <cmath>

using namespace dozely;

namespace
{
QVariantMap fromFile(const QString &path)
{
    const auto list = PropertyList::fromFile(path);
    if (!list)
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("%1 cannot be used: %2.").arg(path, AdminText::reason(list.error())));
    if (list->typeId() != QMetaType::QVariantMap)
        throw AdminError(ExitStatus::Failed, AdminText::tr("%1 is not a dictionary.").arg(path));
    return list->toMap();
}

/// The value of a text whose type nobody named. What would not print the same again, such as "007", stays a
/// text.
QVariant guessed(const QString &text)
{
    if (text == "true" || text == "false")
        return text == "true";
    bool isInteger = false;
    const qint64 integer = text.toLongLong(&isInteger);
    if (isInteger && QString::number(integer) == text)
        return integer;
    static const QRegularExpression decimal(R"(^-?(0|[1-9]\d*)\.\d+$)");
    if (decimal.match(text).hasMatch())
        return text.toDouble();
    return text;
}

QVariant typed(const QString &type, const QString &text)
{
    bool fits = true;
    QVariant value;
    if (type == "string") {
        value = text;
    } else if (type == "integer") {
        value = text.toLongLong(&fits);
    } else if (type == "real") {
        value = text.toDouble(&fits);
        fits = fits && std::isfinite(value.toDouble());
    } else {
        const QStringList yes{"true", "yes", "1"};
        const QStringList no{"false", "no", "0"};
        fits = yes.contains(text) || no.contains(text);
        value = yes.contains(text);
    }
    if (!fits)
        refuse(AdminText::tr("\"%1\" is not of the type %2.").arg(text, type));
    return value;
}

void addParameter(QVariantMap &parameters, const QString &option)
{
    static const QRegularExpression form(R"(^(.+?)(?::(string|integer|real|boolean))?=(.*)$)",
                                         QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(option);
    if (!match.hasMatch())
        refuse(AdminText::tr("\"%1\" is not of the form KEY=VALUE.").arg(option));
    const QString type = match.captured(2);
    const QString text = match.captured(3);
    parameters.insert(match.captured(1), type.isEmpty() ? guessed(text) : typed(type, text));
}

/// A lead time that leaves something to announce, within what a plug-in reads.
qint64 leadTime(const QString &seconds)
{
    bool isNumber = false;
    const int lead = seconds.toInt(&isNumber);
    if (!isNumber || lead < 1)
        refuse(AdminText::tr("--alert needs a whole number of seconds, 1 or more, not \"%1\".").arg(seconds));
    return lead;
}
/// Where the action runs.
void setPlace(const AdminOptions &options, QVariantMap &parameters)
{
    if (options.isSet("in-daemon") && options.isSet("in-session"))
        refuse(AdminText::tr("An action runs in the daemon or in the session, not in both."));
    const bool isNamed = options.isSet("in-daemon") || options.isSet("in-session");
    if (isNamed && options.isSet("in-default"))
        refuse(AdminText::tr("Say one of --in-daemon, --in-session and --in-default."));
    if (isNamed)
        parameters.insert(ParameterKey::actsInUserAgent, options.isSet("in-session") ? 1 : 0);
    else if (options.isSet("in-default"))
        parameters.remove(ParameterKey::actsInUserAgent);
}

/// A parameter that is 1 or not there.
void setFlag(const AdminOptions &options, const QString &option, QLatin1StringView key,
             QVariantMap &parameters)
{
    const QString opposite = "no-" + option;
    if (options.isSaid(option, opposite))
        parameters.insert(key, 1);
    else if (options.isSet(opposite))
        parameters.remove(key);
}
} // namespace

QVariantMap ParameterOptions::read(const AdminOptions &options, const QVariantMap &former)
{
    QVariantMap parameters = former;
    if (options.isSet("parameters"))
        parameters = fromFile(options.value("parameters"));
    for (const QString &key : options.values("no-parameter")) {
        if (parameters.remove(key) == 0)
            refuse(AdminText::tr("There is no parameter \"%1\".").arg(key));
    }
    for (const QString &option : options.values("parameter"))
        addParameter(parameters, option);
    if (options.isSet("program")) {
        if (!options.value("program").startsWith('/'))
            refuse(
                AdminText::tr("The program \"%1\" is not an absolute path.").arg(options.value("program")));
        parameters.insert(CommandKey::program, options.value("program"));
        parameters.insert(CommandKey::arguments, QVariant(options.values("argument")).toList());
    } else if (options.isSet("argument")) {
        if (!former.contains(CommandKey::program))
            refuse(AdminText::tr("--argument needs --program."));
        parameters.insert(CommandKey::arguments, QVariant(options.values("argument")).toList());
    }
    if (options.isSaid("alert", "no-alert")) {
        parameters.insert(ParameterKey::alert, 1);
        parameters.insert(ParameterKey::delayBeforeAlert, leadTime(options.value("alert")));
    } else if (options.isSet("no-alert")) {
        parameters.remove(ParameterKey::alert);
        parameters.remove(ParameterKey::delayBeforeAlert);
    }
    setPlace(options, parameters);
    setFlag(options, "tell-failure", ParameterKey::tellsFailure, parameters);
    setFlag(options, "wake", ParameterKey::needsWakeUp, parameters);
    setFlag(options, "power-on", ParameterKey::needsStartup, parameters);
    // A text that a property list cannot carry would come back as another one, or make the store unreadable.
    const auto readBack = PropertyList::fromData(PropertyList::toData(parameters, PropertyList::Format::Xml));
    if (!readBack || readBack->toMap() != parameters)
        refuse(AdminText::tr("A parameter holds what a property list cannot carry."));
    return parameters;
}
