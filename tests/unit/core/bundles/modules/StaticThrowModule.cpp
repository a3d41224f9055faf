// SPDX-License-Identifier: MIT
#include <QObject>

#include <stdexcept>

namespace
{
struct Trouble {
    Trouble() { throw std::runtime_error("static trouble"); }
};
const Trouble trouble; // NOLINT(cert-err58-cpp): that it throws is the point
} // namespace

/// A module that raises before it has a root object.
class StaticThrowModule : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.dozely.test.Module/1")
};

#include "StaticThrowModule.moc"
