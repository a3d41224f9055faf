// SPDX-License-Identifier: MIT
#include <QFile>
#include <QObject>

namespace
{
/// Tells that code of this module ran.
[[maybe_unused]] const bool ran =
    QFile(qEnvironmentVariable("FOREIGN_MODULE_RAN")).open(QIODevice::WriteOnly);
} // namespace

/// A module of another interface.
class ForeignModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.test.Other/1")
};

#include "ForeignModule.moc"
