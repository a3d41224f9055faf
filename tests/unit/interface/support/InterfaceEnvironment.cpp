// SPDX-License-Identifier: MIT
#include "support/InterfaceEnvironment.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QStyleFactory>

namespace
{
struct Colours {
    QColor window, base, alternate, text, disabled, highlight, highlighted, button;
};

QPalette paletteOf(const Colours &colours)
{
    QPalette palette(colours.text, colours.button, colours.button.lighter(130), colours.button.darker(150),
                     colours.button.darker(120), colours.text, Qt::white, colours.base, colours.window);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, colours.highlighted);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colours.disabled);
    return palette;
}
} // namespace

void InterfaceEnvironment::prepare(const QByteArray &platform)
{
    for (const char *name :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_SCALE_FACTOR_ROUNDING_POLICY",
          "QT_USE_PHYSICAL_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "QT_IM_MODULE"})
        qunsetenv(name);
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("QT_FONT_DPI", "96");
    qputenv("XDG_CACHE_HOME", DOZELY_TEST_CACHE); // not the user's
    qputenv("FONTCONFIG_FILE", DOZELY_TEST_FONTS "/fonts.conf");
    QLocale::setDefault(QLocale::c());
}

void InterfaceEnvironment::settle()
{
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(lightPalette());
    QFont font("DejaVu Sans");
    font.setPixelSize(13);
    QApplication::setFont(font);
}

QPalette InterfaceEnvironment::lightPalette()
{
    return paletteOf({.window = "#f0f0f0",
                      .base = "#ffffff",
                      .alternate = "#f5f5f5",
                      .text = "#101010",
                      .disabled = "#909090",
                      .highlight = "#3070d0",
                      .highlighted = "#ffffff",
                      .button = "#e8e8e8"});
}

QPalette InterfaceEnvironment::darkPalette()
{
    return paletteOf({.window = "#2a2a2a",
                      .base = "#1c1c1c",
                      .alternate = "#242424",
                      .text = "#f2f2f2",
                      .disabled = "#7a7a7a",
                      .highlight = "#3a6fb0",
                      .highlighted = "#ffffff",
                      .button = "#3a3a3a"});
}
