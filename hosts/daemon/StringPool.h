// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <QVariant>

/// Lets equal texts share their memory. A store of a thousand schedules says the same few keys, paths and
/// zones a thousand times, and each text that was parsed is a copy of its own.
class StringPool
{
public:
    /// A text equal to `text`, the same memory each time.
    QString shared(const QString &text) { return *m_texts.insert(text); }

    /// The same value, its texts and those of the containers in it shared.
    QVariant shared(const QVariant &value);
    QVariantMap shared(const QVariantMap &map);

private:
    QSet<QString> m_texts;
};
