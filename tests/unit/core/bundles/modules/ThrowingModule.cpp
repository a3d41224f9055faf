// SPDX-License-Identifier: MIT
#include <QObject>

#include <stdexcept>

/// A module whose root object cannot be made.
class ThrowingModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.test.Module/1")
public:
    ThrowingModule() { throw std::runtime_error("no root today"); }
};

#include "ThrowingModule.moc"
