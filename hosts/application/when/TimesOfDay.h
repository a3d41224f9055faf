// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTime>
#include <QWidget>

class QGridLayout;
class QTimeEdit;
class QToolButton;

/// Edits one time of day or several. THREADING: the main thread.
class TimesOfDay : public QWidget
{
    Q_OBJECT
public:
    explicit TimesOfDay(QWidget *parent = nullptr);

    /// Whether there may be several; those beyond the first are kept, but not shown, where there may not.
    void setSeveral(bool areSeveral);

    /// In order and each once, one at least.
    QList<QTime> times() const;

    /// Tells nobody. Not empty.
    void setTimes(const QList<QTime> &times);

Q_SIGNALS:
    /// Somebody changed, added or removed one.
    void changed();

private:
    struct Row {
        QTimeEdit *edit;
        QToolButton *remove;
    };

    void add(QTime time);
    void addAnother();
    void remove(const QTimeEdit *edit);
    void arrange();

    QGridLayout *m_layout;
    QList<Row> m_rows;
    QToolButton *m_add;
    bool m_areSeveral = true;
};
