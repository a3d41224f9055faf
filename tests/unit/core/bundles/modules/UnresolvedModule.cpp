// SPDX-License-Identifier: MIT
#include <QObject>

void nobodyDefinesThis();

/// A module built against something that the process does not have.
class UnresolvedModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.test.Module/1")
public:
    Q_INVOKABLE void call() { nobodyDefinesThis(); }
};

#include "UnresolvedModule.moc"
