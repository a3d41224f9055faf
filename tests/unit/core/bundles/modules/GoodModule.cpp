// SPDX-License-Identifier: MIT
#include <QObject>

/// A module as it should be.
class GoodModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.test.Module/1")
public:
    Q_INVOKABLE GoodModule() { setObjectName("good"); }
};

#include "GoodModule.moc"
