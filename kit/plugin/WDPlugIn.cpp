// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugIn.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"

using namespace dozely;

WDPlugInProtocol::~WDPlugInProtocol() = default;

struct WDPlugIn::Private {
    std::shared_ptr<NSBundle> bundle;
    bool bundleIsKnown = false;
    std::shared_ptr<QVariantMap> parameters = std::make_shared<QVariantMap>();
    QDateTime calendarDate;
};

WDPlugIn::WDPlugIn() : d(std::make_unique<Private>()) {}

WDPlugIn::~WDPlugIn() = default;

std::shared_ptr<NSBundle> WDPlugIn::bundle() const
{
    // Found at the first question: while this class is constructed the object does not know its own class
    // yet.
    if (!d->bundleIsKnown) {
        d->bundle = NSBundle::bundleForClass(metaObject());
        d->bundleIsKnown = true;
    }
    return d->bundle;
}

void WDPlugIn::setBundle(std::shared_ptr<NSBundle> bundle)
{
    d->bundle = std::move(bundle);
    d->bundleIsKnown = true;
}

QString WDPlugIn::pluginIdentifier() const
{
    const auto own = bundle();
    return own ? own->bundleIdentifier() : QString();
}

QString WDPlugIn::pluginName() const
{
    const QString key = TextKey::pluginName;
    const auto classBundle = NSBundle::bundleForClass(metaObject());
    return classBundle ? classBundle->localizedStringForKey(key) : key;
}

void WDPlugIn::setParameters(const std::shared_ptr<const QVariantMap> &parameters)
{
    d->parameters = parameters ? std::make_shared<QVariantMap>(*parameters) : nullptr;
}

void WDPlugIn::setParameters(const QVariantMap &parameters)
{
    setParameters(std::make_shared<const QVariantMap>(parameters)); // which a plug-in may have overridden
}

std::shared_ptr<QVariantMap> WDPlugIn::parameters() const
{
    return d->parameters;
}

void WDPlugIn::setCalendarDate(const QDateTime &date)
{
    d->calendarDate = date;
}

QDateTime WDPlugIn::calendarDate() const
{
    return d->calendarDate;
}

qint64 WDPlugIn::timeBeforeSelfAnticipation() const
{
    return longIntegerParameter(ParameterKey::alert) == 0 ? -1
                                                          : integerParameter(ParameterKey::delayBeforeAlert);
}

qint32 WDPlugIn::timeOut() const
{
    return -180;
}

qint32 WDPlugIn::integerParameter(const QString &key) const
{
    return d->parameters ? integerValue(d->parameters->value(key)) : 0;
}

qint64 WDPlugIn::longIntegerParameter(const QString &key) const
{
    return d->parameters ? longIntegerValue(d->parameters->value(key)) : 0;
}
