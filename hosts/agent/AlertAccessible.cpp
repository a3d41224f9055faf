// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertAccessible.h"

#include "hosts/agent/AlertWindow.h"
#include "hosts/agent/LaterButton.h"

#include <QAccessibleWidget>
#include <QMenu>

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

/// Qt's own would wait in an event loop until the menu is closed, and whoever asked would have no answer.
class LaterInterface : public QAccessibleWidget
{
public:
    explicit LaterInterface(LaterButton *button) : QAccessibleWidget(button, QAccessible::ButtonMenu) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return button()->text().remove('&');
        return QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = true;
        return state;
    }

    int childCount() const override { return 1; } // the menu

    QAccessibleInterface *child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(button()->menu()) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child && child->object() == button()->menu() ? 0 : -1;
    }

    QStringList actionNames() const override
    {
        return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name != showMenuAction())
            QAccessibleWidget::doAction(name);
        else if (button()->isEnabled())
            button()->openMenu();
    }

private:
    LaterButton *button() const { return qobject_cast<LaterButton *>(object()); }
};

QAccessibleInterface *make(const QString &, QObject *object)
{
    if (auto *const later = qobject_cast<LaterButton *>(object))
        return new LaterInterface(later);
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
