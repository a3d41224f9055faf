// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A sentence below a field: what is wrong with it, or what is to be known of it. Nothing is shown without a
/// sentence. What is wrong is also told to who reads aloud. THREADING: the main thread.
class FaultLabel : public QLabel
{
    Q_OBJECT
public:
    explicit FaultLabel(QWidget *parent = nullptr);

    void showFault(const QString &sentence);
    void showRemark(const QString &sentence);

protected:
    void changeEvent(QEvent *event) override;

private:
    void show(const QString &sentence, bool isFault);
    void setColour();

    bool m_isFault = false;
};
