// SPDX-License-Identifier: MIT
#include "plugins/common/settings/TextRows.h"

#include "plugins/common/settings/ShownText.h"

#include <QJsonDocument>
#include <QJsonValue>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <utility>

namespace
{
constexpr int valueRole = Qt::UserRole;

bool isText(const QVariant &value)
{
    return value.typeId() == QMetaType::QString;
}

/// Something to recognise by it what is no text.
QString told(const QVariant &value)
{
    if (value.canConvert<QString>() && !value.canConvert<QVariantMap>())
        return value.toString();
    const QJsonDocument json = QJsonDocument::fromVariant(value);
    return json.isNull() ? QString::fromLatin1(value.typeName()) : json.toJson(QJsonDocument::Compact);
}

/// Draws a row as the field does in which it is edited: in the direction of the text, whatever that of
/// the view is. What has no characters is named.
class RowDelegate : public QStyledItemDelegate
{
public:
    RowDelegate(const QString &empty, QObject *parent) : QStyledItemDelegate(parent), m_empty(empty) {}

    /// Called what the list is.
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override
    {
        QWidget *const editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (editor && option.widget)
            editor->setAccessibleName(option.widget->accessibleName());
        return editor;
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
        if (!option->text.isEmpty())
            return;
        option->text = m_empty;
        option->direction = option->widget->layoutDirection();
        option->palette.setColor(QPalette::Text, option->palette.color(QPalette::Disabled, QPalette::Text));
    }

private:
    QString m_empty;
};
} // namespace

TextRows::TextRows(QListWidget *list, const Texts &texts) : QObject(list), m_list(list), m_texts(texts)
{
    list->setItemDelegate(new RowDelegate(texts.empty, list));
    connect(list, &QListWidget::itemChanged, this, &TextRows::followEdit);
    connect(list->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &TextRows::followEditor);
    // A screen reader selects a row without moving there.
    connect(list, &QListWidget::itemSelectionChanged, this, [list] {
        const auto selected = list->selectedItems();
        if (selected.size() == 1 && selected.constFirst() != list->currentItem())
            list->setCurrentItem(selected.constFirst());
    });
    const auto *const removing = new QShortcut(Qt::Key_Delete, list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(removing, &QShortcut::activated, this, &TextRows::remove);
}

void TextRows::setField(QLineEdit *field)
{
    m_field = field;
    field->installEventFilter(this);
    connect(field, &QLineEdit::textChanged, this,
            &TextRows::followField); // screen readers edit nothing, they set
    connect(m_list, &QListWidget::currentRowChanged, this, &TextRows::showInField);
    connect(m_list->model(), &QAbstractItemModel::rowsRemoved, this, &TextRows::showInField);
    showInField();
}

void TextRows::show(const QVariant &parameter)
{
    fill(parameter);
    showInField();
}

void TextRows::fill(const QVariant &parameter)
{
    m_shown = parameter;
    m_isList = !parameter.isValid() || parameter.typeId() == QMetaType::QVariantList ||
               parameter.typeId() == QMetaType::QStringList;
    m_list->clear();
    if (m_isList) {
        for (const QVariant &text : parameter.toList())
            append(text);
        return;
    }
    append(parameter);
    m_list->item(0)->setFlags(m_list->item(0)->flags() & ~Qt::ItemIsEditable);
    m_list->item(0)->setToolTip(m_texts.noList);
    m_list->item(0)->setData(Qt::AccessibleDescriptionRole, m_texts.noList);
}

QVariant TextRows::parameter() const
{
    if (!m_isList)
        return m_shown;
    commitEditor();
    QVariantList list;
    for (int row = 0; row < m_list->count(); ++row)
        list += m_list->item(row)->data(valueRole);
    return m_shown.isValid() && list == m_shown.toList() ? m_shown : QVariant(list);
}

QListWidgetItem *TextRows::insert(const QString &text)
{
    const int row = m_list->currentRow() < 0 ? m_list->count() : m_list->currentRow() + 1;
    auto *const item = new QListWidgetItem;
    describe(item, text);
    m_list->insertItem(row, item);
    m_list->setCurrentItem(item);
    return item;
}

void TextRows::add()
{
    if (!m_isList)
        return;
    QListWidgetItem *const item = insert({});
    m_added = m_list->currentIndex();
    if (m_field) {
        m_field->setFocus(Qt::OtherFocusReason);
        return;
    }
    m_list->setFocus();
    m_list->editItem(item);
}

void TextRows::add(const QString &text)
{
    if (m_isList)
        insert(text);
}

void TextRows::remove()
{
    if (m_isList)
        delete m_list->currentItem();
}

void TextRows::append(const QVariant &text)
{
    auto *const item = new QListWidgetItem;
    describe(item, text);
    m_list->addItem(item);
}

void TextRows::describe(QListWidgetItem *row, const QVariant &value)
{
    const QString text = isText(value) ? value.toString() : told(value);
    const bool isShown = isText(value) && ShownText::canBeShown(text);
    const QString reason = isShown ? QString() : m_texts.notShown;
    QFont font = m_list->font();
    font.setItalic(!isShown);
    row->setFont(font);
    row->setData(valueRole, value);
    row->setText(isShown ? text : ShownText::escaped(text));
    row->setToolTip(reason);
    row->setData(Qt::AccessibleDescriptionRole, reason);
    row->setData(Qt::AccessibleTextRole, text.isEmpty() ? QVariant(m_texts.empty) : QVariant());
    row->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren |
                  (isShown ? Qt::ItemIsEditable : Qt::NoItemFlags));
}

void TextRows::followEdit(QListWidgetItem *row)
{
    const QSignalBlocker ownChanges(m_list);
    if (row->flags().testFlag(Qt::ItemIsEditable))
        describe(row, row->text()); // what was pasted need not be what can be shown
    showInField();
}

QListWidgetItem *TextRows::rowOfField() const
{
    return m_list->count() == 1 ? m_list->item(0) : m_list->currentItem();
}

void TextRows::showInField()
{
    if (!m_field)
        return;
    const QListWidgetItem *const row = rowOfField();
    const bool isNew = !row && m_isList && m_list->count() == 0;
    const bool canBeWritten = isNew || (row && row->flags().testFlag(Qt::ItemIsEditable));
    m_field->setReadOnly(!canBeWritten);
    m_field->setEnabled(row || isNew);
    m_field->setAccessibleDescription(row ? row->toolTip() : QString());
    if (m_added.isValid() && (!row || m_added.row() != m_list->row(row)))
        m_added = QPersistentModelIndex();
    const QString text = row ? row->text() : QString();
    if (m_field->text() == text)
        return; // the cursor stays
    const QSignalBlocker own(m_field);
    m_field->setText(text);
}

void TextRows::followField(const QString &text)
{
    if (m_field->isReadOnly())
        return showInField(); // whoever set it
    if (QListWidgetItem *const row = rowOfField())
        row->setText(text);
    else if (!text.isEmpty())
        insert(text);
}

bool TextRows::eventFilter(QObject *receiver, QEvent *event)
{
    const bool isEscape =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
    if (receiver != m_field || !isEscape || !m_added.isValid())
        return QObject::eventFilter(receiver, event);
    dropAdded();
    return true;
}

void TextRows::dropAdded()
{
    const QPersistentModelIndex added = std::exchange(m_added, QPersistentModelIndex());
    if (added.isValid())
        delete m_list->takeItem(added.row());
    m_list->setFocus(Qt::OtherFocusReason);
    showInField();
}

void TextRows::followEditor(QWidget *, QAbstractItemDelegate::EndEditHint hint)
{
    const QPersistentModelIndex added = std::exchange(m_added, QPersistentModelIndex());
    if (added.isValid() && hint == QAbstractItemDelegate::RevertModelCache)
        delete m_list->takeItem(added.row());
}

void TextRows::commitEditor() const
{
    // An editor that is closed already lies there until the event loop takes it; the list knows it no more.
    for (auto *const editor : m_list->viewport()->findChildren<QLineEdit *>())
        QMetaObject::invokeMethod(m_list, "commitData", Q_ARG(QWidget *, editor));
}
