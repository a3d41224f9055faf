// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/window/Card.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <functional>

/// A sentence that a person should read, with what can be done about it. Hidden while there is none.
class NoticeBar : public Panel
{
    Q_OBJECT
public:
    explicit NoticeBar(QWidget *parent = nullptr);

    /// A button, and what it does.
    struct Remedy {
        QString text;
        std::function<void()> act;
    };
    enum class Kind { Information, Warning };

    void tell(Kind kind, const QString &sentence, const QList<Remedy> &remedies = {});
    void clear();
    QString sentence() const { return m_sentence->text(); }

private:
    QLabel *m_sentence;
    QHBoxLayout *m_buttons;
};
