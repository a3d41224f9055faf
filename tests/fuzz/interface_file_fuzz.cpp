// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/interface/controls/ZDRButton.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace dozely;

namespace
{
/// A bundle whose one resource is the interface file.
class Panel
{
public:
    Panel()
    {
        if (!QDir(m_folder.path()).mkpath("Panel.plugin/Contents/Resources"))
            std::abort();
        write("Info.plist", PropertyList::toData(QVariantMap(), PropertyList::Format::Xml));
        m_bundle = NSBundle::bundleWithPath(m_folder.filePath("Panel.plugin"));
    }

    void load(const QByteArray &content)
    {
        write("Resources/Panel.ui", content);
        QObject owner;
        Port<InterfaceFileLoader>::current()->loadNibNamed("Panel", *m_bundle, &owner);
    }

private:
    void write(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.filePath("Panel.plugin/Contents/" + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            std::abort();
    }

    QTemporaryDir m_folder{"/dev/shm/fuzz-XXXXXX"};
    std::shared_ptr<NSBundle> m_bundle;
};
} // namespace

// What Qt keeps of a form that it gives up is its own; leaks of ours are still found.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libQt6UiTools\n";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    RootFolder::set("/nonexistent"); // where no log can be written
    new QApplication(*argc, *argv);  // the first, which fills the port, and the last
    return ZDRButton().isVisible() ? 1 : 0;
}

/// Whatever lies in a bundle's interface file: loading it ends, with views or without.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Panel panel;
    panel.load(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
