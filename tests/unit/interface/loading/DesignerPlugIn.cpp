// SPDX-License-Identifier: MIT
#include <QObject>

/// A plug-in as Qt's Designer loads them, which tells that it was loaded.
class DesignerPlugIn : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidget")
public:
    DesignerPlugIn() { qputenv("DOZELY_TEST_DESIGNER_PLUG_IN", "made"); }
};

[[maybe_unused]] static const bool isLoaded = qputenv("DOZELY_TEST_DESIGNER_PLUG_IN", "loaded");

#include "DesignerPlugIn.moc"
