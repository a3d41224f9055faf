// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertAccessible.h"

#include "hosts/agent/AlertWindow.h"

#include <QAccessibleWidget>

namespace
{
class Interface : public QAccessibleWidget
{
public:
    explicit Interface(AlertWindow *window) : QAccessibleWidget(window, QAccessible::AlertMessage) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Description)
            return qobject_cast<const AlertWindow *>(object())->spokenText();
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *make(const QString &, QObject *object)
{
    auto *const window = qobject_cast<AlertWindow *>(object);
    return window ? new Interface(window) : nullptr;
}
} // namespace

void AlertAccessible::install()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void AlertAccessible::announce(AlertWindow &window)
{
    QAccessibleEvent event(&window, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}
