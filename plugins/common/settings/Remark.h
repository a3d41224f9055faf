// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QWidget>

/// A sentence at the head of a view that says why its action cannot be done here, with a sign beside it.
///
/// THREADING: the main thread.
class Remark : public QWidget
{
    Q_OBJECT
public:
    /// Hidden, as long as nothing was said.
    explicit Remark(QWidget *parent = nullptr);

    /// Shows the sentence, to screen readers too; an empty one hides the remark.
    void say(const QString &sentence);

private:
    QLabel *m_sentence;
};
