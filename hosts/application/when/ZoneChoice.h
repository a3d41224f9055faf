// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

/// Chooses a time zone: the machine's, wherever it goes, or one by its name, which is completed while it is
/// typed. THREADING: the main thread.
class ZoneChoice : public QComboBox
{
    Q_OBJECT
public:
    explicit ZoneChoice(QWidget *parent = nullptr);

    /// The IANA name; empty for the machine's. What is typed and is no zone comes back as it is.
    QString zone() const;

    /// Tells nobody.
    void setZone(const QString &name);

Q_SIGNALS:
    /// Somebody chose or typed another.
    void changed();
};
