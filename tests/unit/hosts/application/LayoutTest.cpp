// SPDX-License-Identifier: MIT
#include "WindowFixture.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "hosts/application/program/Translations.h"
#include "support/InterfaceEnvironment.h"

#include <QAbstractButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

namespace
{
/// What shows its text on one line and has less room than that needs.
QStringList cutOff(const QWidget &window)
{
    QStringList texts;
    const auto check = [&](const QWidget *widget, const QString &text) {
        if (widget->isVisible() && !text.isEmpty() && widget->width() < widget->minimumSizeHint().width())
            texts +=
                QString("%1: %2 < %3").arg(text).arg(widget->width()).arg(widget->minimumSizeHint().width());
    };
    for (const auto *const label : window.findChildren<QLabel *>())
        check(label, label->wordWrap() ? QString() : label->text());
    for (const auto *const button : window.findChildren<QAbstractButton *>())
        check(button, button->text());
    return texts;
}

/// What lies, or ends, beside the window, but for the one point by which Qt's splitter is off from right to
/// left.
QStringList outside(const QWidget &window)
{
    QStringList names;
    for (const auto *const widget : window.findChildren<QWidget *>()) {
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (widget->isVisible() && (place.left() < 0 || place.right() > window.width()))
            names += QString("%1 %2: %3 to %4")
                         .arg(widget->metaObject()->className(), widget->objectName())
                         .arg(place.left())
                         .arg(place.right());
    }
    return names;
}

class LayoutTest : public WindowFixture, public testing::WithParamInterface<const char *>
{
protected:
    LayoutTest()
    {
        const QString language = GetParam();
        dozely::UserLanguages::set({language});
        QLocale::setDefault(QLocale(language));
        Translations::install({language});
        QFont font("DejaVu Sans");
        font.setPointSize(16);
        QApplication::setFont(font);
        client.told = {
            {"Version", "1"},
            {"AgentOfConsoleUser", QVariantMap{{"user", 1000U}, {"name", "anna"}, {"isAlive", false}}},
            {"WakeClock", QVariantMap{{"isSupported", false}}}};
    }
};

TEST_P(LayoutTest, HoldsItsTextsAtSixteenPoints)
{
    open();
    window->resize(1100, 800);
    for (int view = 0; view < find<QTabBar>("views")->count(); ++view) {
        find<QTabBar>("views")->setCurrentIndex(view);
        settle();
        EXPECT_EQ(cutOff(*window).join('\n').toStdString(), "") << "view " << view;
        EXPECT_EQ(outside(*window).join('\n').toStdString(), "") << "view " << view;
    }
    EXPECT_LE(window->minimumSizeHint().width(), 1100);
    find<QTabBar>("views")->setCurrentIndex(0);
    window->resize(100, 100); // as small as it becomes
    settle();
    EXPECT_FALSE(find<QScrollArea>("editor")->horizontalScrollBar()->isVisible());
}

TEST_P(LayoutTest, ReadsInTheDirectionOfItsLanguage)
{
    open();
    const bool isMirrored = QString(GetParam()) == "ar";
    EXPECT_EQ(QGuiApplication::isRightToLeft(), isMirrored);
    const int listAt = list().mapTo(window.get(), QPoint()).x();
    const int nameAt = find<QLineEdit>("name")->mapTo(window.get(), QPoint()).x();
    EXPECT_EQ(listAt > nameAt, isMirrored);
}

INSTANTIATE_TEST_SUITE_P(Languages, LayoutTest, testing::Values("ar", "de", "en", "es", "fr", "ja"),
                         [](const auto &tested) { return std::string(tested.param); });
} // namespace
