// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QAbstractButton;

/// Buttons in rows of which any number is pressed, such as the days of a week. For the keyboard it is one
/// stop: arrows, Home and End go from button to button, the space bar presses. THREADING: the main thread.
class ToggleGrid : public QWidget
{
    Q_OBJECT
public:
    struct Item {
        int value;
        QString text;
        QString name;    ///< What is read aloud.
        int columns = 1; ///< How many it is wide.
    };

    /// `columns`: in a row.
    ToggleGrid(int columns, const QList<Item> &items, QWidget *parent = nullptr);

    QList<int> chosen() const;

    /// Tells nobody.
    void choose(const QList<int> &values);

Q_SIGNALS:
    /// Somebody pressed a button.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void colour(QAbstractButton *button) const;
    void setStop(QAbstractButton *button);

    const int m_columns;
    QList<QAbstractButton *> m_buttons;
    QList<int> m_values; // of the buttons
};
