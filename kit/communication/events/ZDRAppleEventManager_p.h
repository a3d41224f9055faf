// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/ZDRAppleEventManager.h"

#include <QHash>
#include <QMap>

#include <functional>

namespace dozely
{

/// A handler's address as the object that incoming events are sent to: it answers what a number answers.
class DOZELYKIT_AUTOTEST_EXPORT AddressNumber : public QObject
{
    Q_OBJECT
public:
    explicit AddressNumber(quint64 address) : m_address(address) {}
    ~AddressNumber() override;

    Q_INVOKABLE virtual QString description() const { return stringValue(); }
    Q_INVOKABLE virtual QString stringValue() const { return QString::number(m_address); }
    Q_INVOKABLE virtual bool boolValue() const { return m_address != 0; }
    Q_INVOKABLE virtual qint8 charValue() const { return static_cast<qint8>(m_address); }
    Q_INVOKABLE virtual quint8 unsignedCharValue() const { return static_cast<quint8>(m_address); }
    Q_INVOKABLE virtual qint16 shortValue() const { return static_cast<qint16>(m_address); }
    Q_INVOKABLE virtual quint16 unsignedShortValue() const { return static_cast<quint16>(m_address); }
    Q_INVOKABLE virtual qint32 intValue() const { return static_cast<qint32>(m_address); }
    Q_INVOKABLE virtual quint32 unsignedIntValue() const { return static_cast<quint32>(m_address); }
    Q_INVOKABLE virtual qint64 longValue() const { return static_cast<qint64>(m_address); }
    Q_INVOKABLE virtual quint64 unsignedLongValue() const { return m_address; }
    Q_INVOKABLE virtual qint64 longLongValue() const { return static_cast<qint64>(m_address); }
    Q_INVOKABLE virtual quint64 unsignedLongLongValue() const { return m_address; }
    Q_INVOKABLE virtual qint64 integerValue() const { return static_cast<qint64>(m_address); }
    Q_INVOKABLE virtual quint64 unsignedIntegerValue() const { return m_address; }
    Q_INVOKABLE virtual float floatValue() const { return static_cast<float>(m_address); }
    Q_INVOKABLE virtual double doubleValue() const { return static_cast<double>(m_address); }
    Q_INVOKABLE virtual quint64 hash() const { return m_address; }

    /// Whether the number answers the selector; what a QObject answers besides is none of a number's.
    bool respondsToSelector(const QByteArray &selector) const;

    /// Sends it, without the event and the reply: a number's operations take no arguments.
    void performSelector(const QByteArray &selector);

private:
    quint64 m_address;
};

} // namespace dozely

struct ZDRAppleEventManagerPrivate {
    /// Of one pair: the address of a handler to the name of its selector.
    using Handlers = QMap<quint64, QByteArray>;
    using Number = std::function<std::unique_ptr<dozely::AddressNumber>(quint64 address)>;

    static ZDRAppleEventManagerPrivate &of(ZDRAppleEventManager &manager) { return *manager.d; }

    QHash<QString, QHash<QString, Handlers>> appleEventClasses;
    /// Makes the number that is sent to. A test puts a number of its own there, to see what it is sent.
    Number makeNumber = [](quint64 address) { return std::make_unique<dozely::AddressNumber>(address); };
};
