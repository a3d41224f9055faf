// SPDX-License-Identifier: MIT
#include "hosts/application/window/ActionPane.h"

#include "hosts/application/when/WheelGuard.h"
#include "hosts/common/words/ReasonWords.h"

#include <algorithm>

namespace
{
constexpr int iconSize = 20;
constexpr int usualHeight = 260; // of a view that has no end, such as one with a list

/// Fits a plug-in's view into the page: it begins where the page's own fields do, and takes no more than it
/// needs.
void fit(QWidget &view)
{
    if (view.layout())
        view.layout()->setContentsMargins(0, 0, 0, 0);
    view.setMaximumHeight(std::max(view.minimumSizeHint().height(), usualHeight));
}

QVariantMap differences(const QVariantMap &before, const QVariantMap &after)
{
    QVariantMap changes;
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        if (!before.contains(it.key()) || before.value(it.key()) != it.value())
            changes.insert(it.key(), it.value());
    }
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (!after.contains(it.key()))
            changes.insert(it.key(), QVariant());
    }
    return changes;
}

/// Has the keyboard come from the chooser into the view, and through it in its own order.
void insertIntoTabOrder(QWidget *chooser, QWidget *view)
{
    QList<QWidget *> fields;
    for (QWidget *field = view->nextInFocusChain(); field != view; field = field->nextInFocusChain()) {
        if (view->isAncestorOf(field) && field->focusPolicy() != Qt::NoFocus)
            fields += field;
    }
    QWidget *before = chooser;
    for (QWidget *const field : std::as_const(fields)) {
        QWidget::setTabOrder(before, field);
        before = field;
    }
}
} // namespace

ActionPane::ActionPane(ActionSides &sides, QWidget *parent)
    : QWidget(parent), m_sides(sides), m_chooser(new QComboBox), m_sentence(new QLabel)
{
    m_place = new QVBoxLayout(this);
    m_place->setContentsMargins(0, 0, 0, 0);
    m_place->setSpacing(14);
    m_chooser->setObjectName("action");
    m_chooser->setAccessibleName(tr("Action"));
    WheelGuard::guard(m_chooser);
    m_chooser->setIconSize({iconSize, iconSize});
    m_chooser->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_place->addWidget(m_chooser);
    m_sentence->setObjectName("actionSentence");
    m_sentence->setWordWrap(true);
    m_sentence->setForegroundRole(QPalette::PlaceholderText);
    m_sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_sentence->hide();
    m_place->addWidget(m_sentence);
    for (const ActionBundle &action : sides.actions())
        m_chooser->addItem(action.icon, action.name, action.path);
    connect(m_chooser, &QComboBox::activated, this, &ActionPane::choose);
    connect(&sides, &ActionSides::stateChanged, this, &ActionPane::follow);
}

ActionPane::~ActionPane()
{
    letGo();
}

void ActionPane::letGo()
{
    // The view is the plug-in's own.
    if (m_view) {
        m_view->hide();
        m_place->removeWidget(m_view);
        m_view->setParent(nullptr);
    }
    if (m_side)
        m_side->disconnect(this);
    m_view = nullptr;
    m_side = nullptr;
}

void ActionPane::clear()
{
    m_choice.clear();
    m_path.clear();
    m_parameters.clear();
    letGo();
    showSentence({});
}

void ActionPane::show(const QString &path, const QVariantMap &parameters)
{
    const bool isShown = m_side && path == m_path;
    if (isShown && parameters == m_parameters)
        return;
    m_path = path;
    m_parameters = parameters;
    m_choice.clear();
    showChoice();
    showSide();
}

void ActionPane::showChoice()
{
    const QString path = m_choice.isEmpty() ? m_path : m_choice;
    int row = m_chooser->findData(path);
    if (row < 0) { // one that cannot be chosen, but is there
        const ActionBundle &action = m_sides.action(path);
        m_chooser->addItem(action.icon, action.name, path);
        row = m_chooser->count() - 1;
    }
    m_chooser->setCurrentIndex(row);
}

void ActionPane::choose(int index)
{
    const QString path = m_chooser->itemData(index).toString();
    if (path == m_path && m_choice.isEmpty())
        return;
    commit();
    m_choice = path;
    finishChoice();
}

void ActionPane::finishChoice()
{
    if (m_sides.state(m_choice) == ActionSides::State::Trying) {
        letGo();
        showSentence(tr("Loading the settings…"));
        return;
    }
    const QString path = std::exchange(m_choice, {});
    QVariantMap defaults;
    if (ConfigurationSide *const side = m_sides.side(path)) {
        if (const auto own = side->defaults())
            defaults = *own;
    }
    Q_EMIT chosen(path, defaults);
}

void ActionPane::follow(const QString &path)
{
    if (path == m_choice)
        finishChoice();
    else if (path == m_path && m_choice.isEmpty())
        showSide();
}

void ActionPane::showSide()
{
    ConfigurationSide *const side = m_sides.side(m_path);
    if (!side) {
        letGo();
        switch (m_sides.state(m_path)) {
        case ActionSides::State::Trying:
            return showSentence(tr("Loading the settings…"));
        case ActionSides::State::Failed:
            return showFailure(m_sides.failure(m_path));
        default:
            return showSentence(m_sides.action(m_path).exists
                                    ? tr("This action has no settings of its own here.")
                                    : tr("There is no longer an action here: its bundle is missing. Choose "
                                         "another one, or have it installed again."));
        }
    }
    const auto view = side->view();
    if (!view)
        return showFailure(view.error().text);
    const auto shown = side->show(m_parameters);
    const auto read = shown ? side->read() : shown.error();
    if (!read)
        return showFailure(side->failure());
    m_read = *read;
    showSentence({});
    if (m_side == side)
        return;
    letGo();
    m_side = side;
    m_view = *view;
    fit(*m_view);
    m_place->addWidget(m_view);
    m_view->show();
    insertIntoTabOrder(m_chooser, m_view);
    connect(side, &ConfigurationSide::edited, this, &ActionPane::commit);
}

void ActionPane::showFailure(const QString &why)
{
    letGo();
    showSentence(tr("The settings of this action cannot be shown. All else of the schedule can be changed.") +
                 '\n' + ReasonWords::of(why));
}

void ActionPane::showSentence(const QString &sentence)
{
    m_sentence->setText(sentence);
    m_sentence->setVisible(!sentence.isEmpty());
}

void ActionPane::commit()
{
    if (!m_side)
        return;
    const auto read = m_side->read();
    if (!read)
        return showFailure(m_side->failure());
    // Only what is edited: what the view itself adds to parameters that it shows is nobody's wish.
    const QVariantMap changes = differences(m_read, *read);
    if (changes.isEmpty())
        return;
    m_read = *read;
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it.value().isValid())
            m_parameters.insert(it.key(), it.value());
        else
            m_parameters.remove(it.key());
    }
    Q_EMIT edited(changes);
}
