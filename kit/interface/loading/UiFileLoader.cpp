// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/loading/UiFileLoader_p.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/interface/loading/UiOwner_p.h"
#include "DozelyKit/interface/loading/UiWidgets_p.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLayout>
#include <QTranslator>
#include <QWidget>
#include <QXmlStreamReader>

namespace dozely
{

namespace
{
constexpr qint64 largestFile = qint64(1) << 20; // a form that fills the memory
constexpr int deepestElement = 100;             // one nested until reading it overruns the stack

/// Answers with the bundle's texts while a file is read.
class BundleTexts : public QTranslator
{
public:
    BundleTexts(const NSBundle &bundle, QString table) : m_bundle(bundle), m_table(std::move(table))
    {
        QCoreApplication::installTranslator(this);
    }
    ~BundleTexts() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        const QString key = QString::fromUtf8(text);
        const QString found = m_bundle.localizedStringForKey(key, {}, m_table);
        return found == key ? QString() : found; // null: somebody else may know
    }

private:
    const NSBundle &m_bundle;
    QString m_table;
};

/// Gives every view the size that it will have: hidden views are laid out late otherwise.
void settle(QWidget *view)
{
    view->ensurePolished();
    if (QLayout *const layout = view->layout())
        layout->setGeometry(view->contentsRect());
    for (auto *const child : view->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        settle(child);
}

/// Fails when `content` is no tree of elements that can be read.
Result<void> checkElements(const QByteArray &content)
{
    QXmlStreamReader reader(content);
    int depth = 0;
    while (!reader.atEnd() && depth <= deepestElement) {
        const auto token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
    }
    if (depth > deepestElement)
        return Error{"its elements are nested too deeply"};
    if (reader.hasError())
        return Error{reader.errorString()};
    return {};
}

/// The file's content; fails when there is none that can be used.
Result<QByteArray> contentOf(const QString &path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return Error{"it is not there or cannot be read"};
    const QByteArray content = file.read(largestFile + 1);
    if (content.size() > largestFile)
        return Error{"it is larger than 1 MiB"};
    if (const auto checked = checkElements(content); !checked)
        return checked.error();
    return content;
}
} // namespace

bool UiFileLoader::loadNibNamed(const QString &name, const NSBundle &bundle, QObject *owner)
{
    const auto refuse = [&](const QString &why) {
        ZDRLog("The interface file %@ of %@ was not loaded: %@", name, bundle.bundlePath(), why);
        return false;
    };
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return refuse("there is no display");
    const QString path = bundle.pathForResource(name, "ui");
    auto content = contentOf(path);
    if (!content)
        return refuse(content.error().text);

    QBuffer buffer(&*content);
    buffer.open(QIODevice::ReadOnly);
    const auto widgets = UiWidgets::make();
    widgets->setWorkingDirectory(QFileInfo(path).dir());
    QWidget *view = nullptr;
    {
        const BundleTexts texts(bundle, name);
        view = widgets->load(&buffer);
    }
    if (!view)
        return refuse(widgets->errorString());
    QObject::connect(owner, &QObject::destroyed, view, [view] { delete view; });
    settle(view);
    UiOwner uiOwner(owner);
    uiOwner.connectTo(view);
    uiOwner.awaken(view);
    return true;
}

namespace
{
void fillPort()
{
    auto &loader = Port<InterfaceFileLoader>::current();
    if (!loader)
        loader = std::make_shared<UiFileLoader>();
}
} // namespace
Q_COREAPP_STARTUP_FUNCTION(fillPort)

} // namespace dozely
