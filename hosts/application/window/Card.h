// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

/// A section of a page: its title, and below it what belongs together, on a quiet panel in the palette's own
/// colours. Screen readers see a group with the title as its name.
class Card : public QWidget
{
    Q_OBJECT
public:
    explicit Card(const QString &title, QWidget *parent = nullptr);

    /// Where the content goes, from top to bottom.
    QVBoxLayout *content() const { return m_content; }

private:
    QVBoxLayout *m_content;
};

/// The panel of a Card, and of whatever else shall look like one.
class Panel : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Tinted with that colour of the palette's; absent unless set.
    void setTint(const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_tint;
};
