// SPDX-License-Identifier: MIT
#include "support/WidgetDescription.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QShortcut>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableView>
#include <QTimeEdit>
#include <QToolButton>

#include <algorithm>
#include <map>
#include <memory>

namespace
{
constexpr int mostItems = 50; // that are told

/// How Qt makes a widget of the nearest class that this knows, whatever the locale.
class Usual
{
public:
    Usual()
    {
        add<QWidget, QFrame, QLabel, QLineEdit, QPlainTextEdit, QPushButton, QToolButton, QCheckBox,
            QRadioButton, QComboBox, QSpinBox, QDateEdit, QTimeEdit, QDateTimeEdit, QGroupBox, QListView,
            QTableView, QScrollArea, QSplitter, QStackedWidget, QTabBar, QMainWindow>();
    }
    const QWidget &of(const QWidget &widget) const
    {
        for (const QMetaObject *type = widget.metaObject();; type = type->superClass()) {
            const auto found = m_widgets.find(type);
            if (found != m_widgets.end())
                return *found->second;
        }
    }

private:
    template<class... Types>
    void add()
    {
        (m_widgets.emplace(&Types::staticMetaObject, std::make_unique<Types>()), ...);
        for (const auto &[type, widget] : m_widgets)
            widget->setLocale(QLocale::c());
    }
    std::map<const QMetaObject *, std::unique_ptr<QWidget>> m_widgets;
};

QString text(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QSize: {
        const QSize size = value.toSize();
        return QString("%1x%2").arg(size.width()).arg(size.height());
    }
    case QMetaType::QRect: {
        const QRect place = value.toRect();
        return QString("%1,%2 %3x%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
    }
    case QMetaType::QFont: {
        const QFont font = value.value<QFont>();
        return QString("%1 px, weight %2%3")
            .arg(font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 4 / 3)
            .arg(font.weight())
            .arg(font.italic() ? ", italic" : "");
    }
    case QMetaType::QSizePolicy: {
        const auto policy = value.value<QSizePolicy>();
        return QString("%1/%2 stretch %3/%4")
            .arg(policy.horizontalPolicy())
            .arg(policy.verticalPolicy())
            .arg(policy.horizontalStretch())
            .arg(policy.verticalStretch());
    }
    default:
        return value.toString().replace('\n', "\\n");
    }
}

QString quoted(const QString &words)
{
    return '"' + text(words) + '"';
}

QString heading(const QWidget &widget)
{
    QString line = widget.metaObject()->className();
    if (!widget.objectName().isEmpty())
        line += ' ' + quoted(widget.objectName());
    return line;
}

/// The colours that are the widget's own.
QString colours(const QWidget &widget)
{
    QStringList own;
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const auto colourRole = static_cast<QPalette::ColorRole>(role);
        if (role != QPalette::NoRole && widget.testAttribute(Qt::WA_SetPalette) &&
            widget.palette().isBrushSet(QPalette::Active, colourRole) &&
            widget.palette().color(colourRole) != QApplication::palette(&widget).color(colourRole))
            own += QString("%1 %2").arg(QVariant::fromValue(colourRole).toString(),
                                        widget.palette().color(colourRole).name(QColor::HexArgb));
    }
    return own.join(", ");
}

/// What is not as usual: "name: value" each.
QStringList peculiarities(const QWidget &widget, const QWidget &usual)
{
    static const QStringList untold{"objectName",
                                    "geometry",
                                    "frameGeometry",
                                    "normalGeometry",
                                    "x",
                                    "y",
                                    "pos",
                                    "size",
                                    "width",
                                    "height",
                                    "rect",
                                    "childrenRect",
                                    "childrenRegion",
                                    "visible",
                                    "isActiveWindow",
                                    "focus",
                                    "underMouse",
                                    "sizeHint",
                                    "minimumSizeHint",
                                    "minimumWidth",
                                    "minimumHeight",
                                    "maximumWidth",
                                    "maximumHeight",
                                    "minimized",
                                    "maximized",
                                    "fullScreen",
                                    "windowIcon",
                                    "palette",
                                    "locale",
                                    "cursor",
                                    "frameWidth",
                                    "frameSize",
                                    "cursorPosition",
                                    "undoAvailable",
                                    "redoAvailable",
                                    "modified",
                                    "hasSelectedText",
                                    "selectedText",
                                    "selectionStart",
                                    "windowFlags",
                                    "modal",
                                    "frameRect",
                                    "displayText",
                                    "documentTitle",
                                    "blockCount",
                                    "down",
                                    "iconSize",
                                    "sizePolicy",
                                    "plainText",
                                    "html",
                                    "windowOpacity",
                                    "enabled",
                                    "value",
                                    "dateTime",
                                    "markdown",
                                    "cleanText",
                                    "pixmap",
                                    "count",
                                    "icon"};
    QStringList result;
    const QMetaObject *const type = usual.metaObject();
    for (int number = 0; number < type->propertyCount(); ++number) {
        const QMetaProperty property = type->property(number);
        const QString name = property.name();
        if (untold.contains(name))
            continue;
        const QVariant value = property.read(&widget);
        if (name == "font") {
            if (widget.font() != QApplication::font(&widget))
                result += "font: " + text(value);
        } else if (value != property.read(&usual)) {
            result += name + ": " +
                      (property.isFlagType()   ? QString(property.enumerator().valueToKeys(value.toInt()))
                       : property.isEnumType() ? QString(property.enumerator().valueToKey(value.toInt()))
                                               : text(value));
        }
    }
    if (const auto policy = widget.sizePolicy(); policy.horizontalStretch() || policy.verticalStretch())
        result += "sizePolicy: " + text(QVariant::fromValue(policy));
    if (const auto *const field = qobject_cast<const QPlainTextEdit *>(&widget);
        field && !field->toPlainText().isEmpty())
        result += "plainText: " + text(field->toPlainText());
    if (const auto *const spin = qobject_cast<const QSpinBox *>(&widget))
        result += "value: " + spin->text();
    if (const auto *const label = qobject_cast<const QLabel *>(&widget)) {
        if (label->buddy())
            result += "buddy: " + heading(*label->buddy()) + ' ' + label->buddy()->accessibleName();
        if (!label->pixmap().isNull())
            result += "pixmap: " + text(label->pixmap().size());
    }
    if (widget.foregroundRole() != usual.foregroundRole())
        result += "foregroundRole: " + QVariant::fromValue(widget.foregroundRole()).toString();
    if (widget.backgroundRole() != usual.backgroundRole())
        result += "backgroundRole: " + QVariant::fromValue(widget.backgroundRole()).toString();
    if (const QString own = colours(widget); !own.isEmpty())
        result += "colours: " + own;
    result.removeDuplicates();
    return result;
}

QStringList actions(const QWidget &widget)
{
    QStringList lines;
    for (const QAction *const action : widget.actions()) {
        if (action->isSeparator()) {
            lines += "separator";
            continue;
        }
        QString line = "action " + quoted(action->text());
        if (!action->shortcut().isEmpty())
            line += ' ' + action->shortcut().toString();
        if (action->isCheckable())
            line += action->isChecked() ? " on" : " off";
        if (!action->isEnabled())
            line += " disabled";
        if (!action->isVisible())
            line += " hidden";
        lines += line;
    }
    return lines;
}

/// What a widget offers to choose from.
QStringList items(const QWidget &widget)
{
    QStringList lines;
    if (const auto *const choice = qobject_cast<const QComboBox *>(&widget)) {
        // What is longer is the machine's, as time zones are.
        const int told = choice->count() <= mostItems ? choice->count() : 1;
        for (int item = 0; item < told; ++item)
            lines += "item " + quoted(choice->itemText(item));
    }
    if (const auto *const tabs = qobject_cast<const QTabBar *>(&widget)) {
        for (int tab = 0; tab < tabs->count(); ++tab)
            lines += "tab " + quoted(tabs->tabText(tab));
    }
    if (const auto *const view = qobject_cast<const QAbstractItemView *>(&widget); view && view->model()) {
        for (int row = 0; row < std::min(view->model()->rowCount(), mostItems); ++row) {
            QStringList cells;
            for (int column = 0; column < view->model()->columnCount(); ++column) {
                const QModelIndex index = view->model()->index(row, column);
                const QVariant said = index.data(Qt::AccessibleTextRole);
                const QRect place = view->visualRect(index);
                cells += quoted((said.isValid() ? said : index.data()).toString()) + ' ' + text(place) +
                         (index.flags().testFlag(Qt::ItemIsEnabled) ? "" : " disabled");
            }
            lines += "row " + cells.join(" | ");
        }
    }
    lines += actions(widget);
    if (const auto *const button = qobject_cast<const QToolButton *>(&widget); button && button->menu())
        lines += actions(*button->menu());
    for (const QObject *const child : widget.children()) {
        if (const auto *const shortcut = qobject_cast<const QShortcut *>(child))
            lines += "shortcut " + shortcut->key().toString() + (shortcut->isEnabled() ? "" : " disabled");
    }
    return lines;
}

/// Made by Qt, and described with what they are parts of.
bool hasParts(const QWidget &widget)
{
    return qobject_cast<const QComboBox *>(&widget) || qobject_cast<const QAbstractSpinBox *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget) || qobject_cast<const QLineEdit *>(&widget) ||
           qobject_cast<const QPlainTextEdit *>(&widget) || qobject_cast<const QTabBar *>(&widget);
}

void describe(const QWidget &widget, const Usual &usual, int depth, QStringList &lines)
{
    const QString indent(2 * depth, ' ');
    if (depth > 0 && widget.isHidden()) {
        lines += indent + heading(widget) + " hidden";
        return;
    }
    const QRect place = widget.geometry();
    lines += indent + heading(widget) + ' ' + (depth > 0 ? text(place) : text(place.size())) +
             (widget.isEnabled() ? "" : " disabled");
    for (const QString &line : peculiarities(widget, usual.of(widget)) + items(widget))
        lines += indent + "    " + line;
    if (hasParts(widget))
        return;
    for (const QObject *const child : widget.children()) {
        const auto *const part = qobject_cast<const QWidget *>(child);
        if (part && !part->isWindow())
            describe(*part, usual, depth + 1, lines);
    }
}

/// Which widgets Tab comes to, one after the other.
QStringList tabOrder(const QWidget &widget)
{
    QStringList names;
    for (const QWidget *next = widget.nextInFocusChain(); next != &widget; next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) == 0 || !next->isVisibleTo(&widget) || !next->isEnabled() ||
            next->focusProxy())
            continue;
        const QVariant words = next->property("text");
        names += next->metaObject()->className() + (!next->objectName().isEmpty()
                                                        ? ' ' + quoted(next->objectName())
                                                    : words.isValid() ? ' ' + quoted(words.toString())
                                                                      : QString());
    }
    return names;
}
} // namespace

QString describe(const QWidget &widget)
{
    QStringList lines;
    describe(widget, Usual(), 0, lines);
    lines += "Tab goes to";
    for (const QString &name : tabOrder(widget))
        lines += "    " + name;
    return lines.join('\n') + '\n';
}
