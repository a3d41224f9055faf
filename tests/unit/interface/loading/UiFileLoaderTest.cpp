// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/loading/UiFileLoader_p.h"

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/lists/ZDRTableView.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>

#include <gmock/gmock.h>

using namespace dozely;

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
const char *const form = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Panel</class>
 <widget class="QWidget" name="view">
  <property name="geometry"><rect><x>0</x><y>0</y><width>300</width><height>200</height></rect></property>
  <layout class="QVBoxLayout" name="rows">
   <item><widget class="QLabel" name="greeting"><property name="text"><string>Good morning</string></property></widget></item>
   <item><widget class="QLineEdit" name="name"/></item>
   <item><widget class="ZDRButton" name="apply">
    <property name="text"><string>Apply</string></property>
    <property name="keyEquivalent" stdset="0"><string>&#13;</string></property>
   </widget></item>
   <item><widget class="ZDRProgressIndicator" name="pie"/></item>
   <item><widget class="ZDRTableView" name="table"/></item>
   <item><widget class="QSlider" name="unrelated"/></item>
  </layout>
 </widget>
 <customwidgets>
  <customwidget><class>ZDRButton</class><extends>QPushButton</extends><header>interface/ZDRButton.h</header></customwidget>
  <customwidget><class>ZDRProgressIndicator</class><extends>QWidget</extends><header>interface/ZDRProgressIndicator.h</header></customwidget>
  <customwidget><class>ZDRTableView</class><extends>QTableView</extends><header>interface/ZDRTableView.h</header></customwidget>
 </customwidgets>
</ui>)";

class Owner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QWidget *view MEMBER view)
    Q_PROPERTY(QLineEdit *name MEMBER name)
    Q_PROPERTY(ZDRButton *apply MEMBER apply)
    Q_PROPERTY(ZDRProgressIndicator *pie MEMBER pie)
    Q_PROPERTY(ZDRTableView *table MEMBER table)
    Q_PROPERTY(QLabel *unrelated MEMBER unrelated) // which is a slider in the file
    Q_PROPERTY(QString greeting MEMBER greeting)   // which is no outlet
public:
    Q_INVOKABLE void awakeFromNib()
    {
        ++awakenings;
        hadOutlets = name && apply;
        buttonWasAwake = apply && apply->wantsLayer();
        heightAtAwakening = apply ? apply->height() : -1;
    }
    Q_INVOKABLE void on_apply_clicked() { ++applied; }
    Q_INVOKABLE void on_name_textChanged(const QString &text) { typed += text; }
    Q_INVOKABLE void on_name_textEdited(int) { ++applied; } // arguments that do not fit
    Q_INVOKABLE void on_nobody_clicked() { ++applied; }

    QWidget *view = nullptr;
    QLineEdit *name = nullptr;
    ZDRButton *apply = nullptr;
    ZDRProgressIndicator *pie = nullptr;
    ZDRTableView *table = nullptr;
    QLabel *unrelated = nullptr;
    QString greeting;
    int awakenings = 0;
    bool hadOutlets = false;
    bool buttonWasAwake = false;
    int heightAtAwakening = 0;
    int applied = 0;
    QStringList typed;
};

class UiFileLoaderTest : public testing::Test
{
protected:
    void write(const QString &file, const QByteArray &content)
    {
        const QString path = root.join("/Panel.plugin/Contents/" + file);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile written(path);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(content);
    }
    std::shared_ptr<NSBundle> bundle(const QVariantMap &info = {})
    {
        write("Info.plist", PropertyList::toData(info, PropertyList::Format::Xml));
        return NSBundle::bundleWithPath(root.join("/Panel.plugin"));
    }
    bool load(const QString &name = "Panel")
    {
        return Port<InterfaceFileLoader>::current()->loadNibNamed(name, *bundle(), owner.get());
    }
    testing::AssertionResult refusesWith(const QString &why)
    {
        const qsizetype before = root.logLines().size();
        if (load())
            return testing::AssertionFailure() << "it was loaded";
        const QStringList lines = root.logLines().mid(before);
        if (lines.size() != 1 || !lines.first().contains("The interface file Panel of") ||
            !lines.first().contains(why))
            return testing::AssertionFailure() << qPrintable(lines.join('\n'));
        return testing::AssertionSuccess();
    }

    ScratchRoot root;
    std::unique_ptr<Owner> owner = std::make_unique<Owner>();
};
} // namespace

TEST_F(UiFileLoaderTest, IsThePortOfAProcessThatLoadedTheLibrary)
{
    ASSERT_TRUE(Port<InterfaceFileLoader>::current());
    EXPECT_TRUE(dynamic_cast<UiFileLoader *>(Port<InterfaceFileLoader>::current().get()));
}

TEST_F(UiFileLoaderTest, FillsTheOutletsOfTheOwner)
{
    write("Resources/Panel.ui", form);
    ASSERT_TRUE(load());
    ASSERT_TRUE(owner->view);
    EXPECT_TRUE(owner->name && owner->apply && owner->pie && owner->table);
    EXPECT_EQ(owner->name->window(), owner->view);
    EXPECT_EQ(owner->apply->text(), "Apply");
    EXPECT_TRUE(owner->apply->isMainButton());
    EXPECT_EQ(owner->unrelated, nullptr) << "its type does not fit";
    EXPECT_TRUE(owner->greeting.isNull());
    EXPECT_THAT(root.logLines(), IsEmpty());
}

TEST_F(UiFileLoaderTest, ConnectsActionsByName)
{
    write("Resources/Panel.ui", form);
    ASSERT_TRUE(load());
    owner->apply->click();
    EXPECT_EQ(owner->applied, 1);
    QTest::keyClick(owner->name, Qt::Key_X);
    EXPECT_EQ(owner->typed, QStringList("x"));
    EXPECT_EQ(owner->applied, 1) << "a method whose arguments do not fit is no action";
}

TEST_F(UiFileLoaderTest, AwakensEverythingOnceItIsConnectedAndHasItsSize)
{
    write("Resources/Panel.ui", form);
    ASSERT_TRUE(load());
    EXPECT_EQ(owner->awakenings, 1);
    EXPECT_TRUE(owner->hadOutlets);
    EXPECT_TRUE(owner->buttonWasAwake) << "the owner is the last";
    EXPECT_EQ(owner->heightAtAwakening, owner->apply->sizeHint().height());
    EXPECT_EQ(owner->apply->layer().cornerRadius, owner->apply->sizeHint().height() / 2.0);
    const int height = owner->apply->height();
    owner->view->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(owner->apply->height(), height) << "showing it changes nothing any more";
}

TEST_F(UiFileLoaderTest, LooksTextsUpInTheBundlesTableOfThatName)
{
    write("Resources/Panel.ui", form);
    write("Resources/de.lproj/Panel.strings", "\"Good morning\" = \"Guten Morgen\";\n");
    write("Resources/en.lproj/Panel.strings", "\"Apply\" = \"Take it\";\n");
    UserLanguages::set({"de"});
    ASSERT_TRUE(load());
    EXPECT_EQ(owner->view->findChild<QLabel *>("greeting")->text(), "Guten Morgen");
    EXPECT_EQ(owner->apply->text(), "Take it") << "English where the language has none";
    EXPECT_EQ(QCoreApplication::translate("Panel", "Good morning"), "Good morning")
        << "only while it is loaded";
}

TEST_F(UiFileLoaderTest, PrefersAFileOfTheUsersLanguage)
{
    write("Resources/Panel.ui", form);
    write("Resources/de.lproj/Panel.ui", QByteArray(form).replace("Apply", "Anwenden"));
    UserLanguages::set({"de"});
    ASSERT_TRUE(load());
    EXPECT_EQ(owner->apply->text(), "Anwenden");
}

TEST_F(UiFileLoaderTest, LetsTheFileLiveAsLongAsItsOwner)
{
    write("Resources/Panel.ui", form);
    ASSERT_TRUE(load());
    const QPointer<QWidget> view = owner->view;
    owner.reset();
    EXPECT_FALSE(view);
    owner = std::make_unique<Owner>();
    ASSERT_TRUE(load());
    delete owner->view; // by the window that it was put into, for example
    owner.reset();
}

TEST_F(UiFileLoaderTest, LoadsAWindowOfOursWithItsContent)
{
    write("Resources/Panel.ui", R"(<ui version="4.0"><class>Panel</class>
 <widget class="ZDRBezelWindow" name="view"><widget class="QWidget" name="content"/></widget>
 <customwidgets><customwidget><class>ZDRBezelWindow</class><extends>QWidget</extends><header>x.h</header></customwidget></customwidgets></ui>)");
    ASSERT_TRUE(load());
    auto *const window = qobject_cast<ZDRBezelWindow *>(owner->view);
    ASSERT_TRUE(window);
    EXPECT_FALSE(window->hasShadow()) << "it was awakened";
    ASSERT_TRUE(window->contentView());
    EXPECT_TRUE(window->contentView()->findChild<QWidget *>("content")) << "on the bezel";
}

TEST_F(UiFileLoaderTest, LoadsABezelWindowThatHasALayout)
{
    QByteArray file = form;
    file.replace("class=\"QWidget\" name=\"view\"", "class=\"ZDRBezelWindow\" name=\"view\"");
    file.replace("<customwidgets>", "<customwidgets><customwidget><class>ZDRBezelWindow</class>"
                                    "<extends>QWidget</extends><header>x.h</header></customwidget>");
    write("Resources/Panel.ui", file);
    ASSERT_TRUE(load());
    auto *const window = qobject_cast<ZDRBezelWindow *>(owner->view);
    ASSERT_TRUE(window);
    ASSERT_TRUE(qobject_cast<ZDRBezelView *>(window->contentView()));
    EXPECT_EQ(window->size(), QSize(300, 200));
    EXPECT_TRUE(window->contentView()->isAncestorOf(owner->apply));
    EXPECT_TRUE(owner->buttonWasAwake);
    EXPECT_EQ(owner->heightAtAwakening, owner->apply->height()) << "it had its size";
    window->resize(400, 300);
    window->show();
    EXPECT_TRUE(owner->name->isVisible());
    EXPECT_GT(owner->name->width(), 350) << "the layout goes on placing it";
}

TEST_F(UiFileLoaderTest, RefusesWhatIsNotThereInOneLine)
{
    EXPECT_TRUE(refusesWith("it is not there or cannot be read"));
    EXPECT_EQ(owner->awakenings, 0);
}

TEST_F(UiFileLoaderTest, RefusesWhatIsNoInterfaceFileInOneLine)
{
    write("Resources/Panel.ui", "<ui version=\"4.0\"><widget class=");
    EXPECT_TRUE(refusesWith(""));
    EXPECT_EQ(owner->awakenings, 0);
}

TEST_F(UiFileLoaderTest, RefusesAFileThatWouldOverrunTheStack)
{
    const auto writeNested = [this](int levels) {
        write("Resources/Panel.ui", "<ui version=\"4.0\">" +
                                        QByteArray("<widget class=\"QWidget\">").repeated(levels) +
                                        QByteArray("</widget>").repeated(levels) + "</ui>");
    };
    writeNested(99);
    EXPECT_TRUE(load()) << "with the one around them, a hundred";
    for (const int tooMany : {100, 20000}) {
        writeNested(tooMany);
        EXPECT_TRUE(refusesWith("nested too deeply")) << tooMany;
    }
}

TEST_F(UiFileLoaderTest, RefusesAFileThatWouldFillTheMemory)
{
    const QByteArray largest = QByteArray(form).leftJustified(1 << 20, ' ');
    write("Resources/Panel.ui", largest);
    EXPECT_TRUE(load());
    write("Resources/Panel.ui", largest + ' ');
    EXPECT_TRUE(refusesWith("larger than 1 MiB"));
}

TEST_F(UiFileLoaderTest, LoadsNoCodeFromWhereQtLooksForPlugIns)
{
    QCoreApplication::addLibraryPath(DOZELY_TEST_QT_PLUGINS);
    const QStringList paths = QCoreApplication::libraryPaths();
    ASSERT_THAT(paths, Contains(QString(DOZELY_TEST_QT_PLUGINS)));
    write("Resources/Panel.ui", form);
    ASSERT_TRUE(load());
    EXPECT_FALSE(qEnvironmentVariableIsSet("DOZELY_TEST_DESIGNER_PLUG_IN"));
    EXPECT_EQ(QCoreApplication::libraryPaths(), paths) << "those of others stay";
    QCoreApplication::removeLibraryPath(DOZELY_TEST_QT_PLUGINS);
}

TEST_F(UiFileLoaderTest, GivesAConfigurationPlugInItsView)
{
    write("Resources/Settings.ui", QByteArray(form).replace("name=\"view\"", "name=\"setupView\""));
    const auto own = bundle({{"WDEditNibFile", "Settings"}});
    QPointer<QWidget> view;
    {
        WDPrefPanePlugIn plugIn;
        plugIn.setBundle(own);
        EXPECT_EQ(plugIn.setupView(), nullptr);
        plugIn.loadNib();
        view = plugIn.setupView();
        ASSERT_TRUE(view);
        EXPECT_TRUE(view->findChild<QLineEdit *>("name"));
        plugIn.loadNib();
        EXPECT_FALSE(view) << "the new view took its place";
        view = plugIn.setupView();
        QWidget window;
        view->setParent(&window); // a host shows it, and closes first
    }
    EXPECT_FALSE(view);
}

TEST_F(UiFileLoaderTest, HandsTheViewOfAPlugInThatIsGoneBackToNobody)
{
    write("Resources/Settings.ui", QByteArray(form).replace("name=\"view\"", "name=\"setupView\""));
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    {
        WDPrefPanePlugIn plugIn;
        plugIn.setBundle(bundle({{"WDEditNibFile", "Settings"}}));
        plugIn.loadNib();
        layout->addWidget(plugIn.setupView());
        EXPECT_EQ(layout->count(), 1);
    }
    EXPECT_EQ(layout->count(), 0) << "the plug-in took its view along";
}

TEST_F(UiFileLoaderTest, TakesNothingButAWidgetForAView)
{
    WDPrefPanePlugIn plugIn;
    QObject noWidget;
    plugIn.setProperty("setupView", QVariant::fromValue(&noWidget));
    EXPECT_EQ(plugIn.setupView(), nullptr);
    auto *const widget = new QWidget;
    plugIn.setProperty("setupView", QVariant::fromValue<QObject *>(widget));
    EXPECT_EQ(plugIn.setupView(), widget);
    const QPointer<QWidget> kept = widget;
    plugIn.setSetupView(widget);
    EXPECT_TRUE(kept) << "the same view again is no other in its place";
    EXPECT_EQ(plugIn.setupView(), widget);
    delete widget;
    EXPECT_EQ(plugIn.setupView(), nullptr) << "deleted by somebody else";
}

#include "UiFileLoaderTest.moc"
