// SPDX-License-Identifier: MIT
// Every piece of the interface library, live.
#include "GalleryWindow.h"
#include "Theme.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("gallery");
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows every piece of the interface library.");
    parser.addHelpOption();
    parser.addOption({"pictures", "Write pictures into <FOLDER> instead of opening a window.", "FOLDER"});
    parser.addOption({"plug-in", "Show the configuration view of the plug-in <BUNDLE>.", "BUNDLE"});
    parser.addOption(
        {"look", "Show it in the colours <LOOK>: " + Theme::names().join(", ") + '.', "LOOK", "desktop"});
    parser.addOption({"right-to-left", "Show it from right to left."});
    parser.process(application);

    const auto look = Theme::names().indexOf(parser.value("look"));
    if (look < 0) {
        std::fputs("gallery: there is no such look\n", stderr);
        return 64;
    }
    if (look != Theme::Desktop)
        Theme::set(static_cast<Theme::Look>(look));
    if (parser.isSet("right-to-left"))
        QApplication::setLayoutDirection(Qt::RightToLeft);
    GalleryWindow window(parser.value("plug-in"), static_cast<Theme::Look>(look));
    if (parser.isSet("pictures")) {
        if (window.writePictures(parser.value("pictures")))
            return 0;
        std::fputs("gallery: the pictures could not be written\n", stderr);
        return 1;
    }
    window.show();
    return QApplication::exec();
}
