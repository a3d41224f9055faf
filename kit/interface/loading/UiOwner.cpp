// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/loading/UiOwner_p.h"

#include <QList>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>

namespace dozely
{

namespace
{
/// The object and all that lies in it. What happens to one of them may destroy others.
QList<QPointer<QObject>> allOf(QObject *object)
{
    QList<QPointer<QObject>> all{object};
    for (QObject *const inner : object->findChildren<QObject *>())
        all += inner;
    return all;
}

bool isObjectPointer(const QMetaProperty &property)
{
    return property.metaType().flags().testFlag(QMetaType::PointerToQObject);
}

/// The first signal of that name, the most derived class and the one with the most arguments first, whose
/// arguments the method takes.
QMetaMethod signalFor(const QMetaObject *meta, const QByteArray &name, const QMetaMethod &method)
{
    for (int index = meta->methodCount() - 1; index >= 0; --index) {
        const QMetaMethod candidate = meta->method(index);
        if (candidate.methodType() == QMetaMethod::Signal && candidate.name() == name &&
            QMetaObject::checkConnectArgs(candidate, method))
            return candidate;
    }
    return {};
}

void callAwakeFromNib(QObject *object)
{
    const QMetaObject *const meta = object ? object->metaObject() : nullptr;
    const int index = meta ? meta->indexOfMethod("awakeFromNib()") : -1;
    if (index >= 0)
        meta->method(index).invoke(object, Qt::DirectConnection);
}
} // namespace

void UiOwner::connectTo(QObject *view)
{
    for (const auto &object : allOf(view)) {
        if (object && !object->objectName().isEmpty())
            connectActions(object);
        if (object && !object->objectName().isEmpty())
            fillOutlet(object);
    }
}

void UiOwner::fillOutlet(QObject *object)
{
    const QMetaObject *const meta = m_owner->metaObject();
    const QByteArray name = object->objectName().toUtf8();
    // "objectName" and its like are no outlets.
    const QMetaProperty property = meta->property(meta->indexOfProperty(name.constData()));
    if (property.isWritable() && isObjectPointer(property))
        property.write(m_owner, QVariant::fromValue(object));
}

void UiOwner::connectActions(QObject *object)
{
    const QByteArray prefix = "on_" + object->objectName().toUtf8() + '_';
    const QMetaObject *const meta = m_owner->metaObject();
    for (int index = 0; index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (!method.name().startsWith(prefix))
            continue;
        const QMetaMethod signal = signalFor(object->metaObject(), method.name().mid(prefix.size()), method);
        if (signal.isValid())
            QObject::connect(object, signal, m_owner, method);
    }
}

void UiOwner::awaken(QObject *view)
{
    for (const auto &object : allOf(view))
        callAwakeFromNib(object);
    callAwakeFromNib(m_owner);
}

} // namespace dozely
