// SPDX-License-Identifier: MIT
//
// A bezel window that nothing paints anew, for somebody who watches it from another process. Each line that
// is read is an order: "show" or "close". Writes the kind of its event loop first, and the number of its
// window when that begins to appear.
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <string>

#include <unistd.h>

namespace
{
void tell(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ZDRBezelWindow window;
    window.setGeometry(100, 100, 900, 500); // in the middle of the display, wherever a compositor puts it
    window.setContentView(nullptr);
    tell(QAbstractEventDispatcher::instance()->metaObject()->className());

    std::string order;
    QSocketNotifier orders(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&orders, &QSocketNotifier::activated, &window, [&] {
        char letter = 0;
        if (::read(STDIN_FILENO, &letter, 1) != 1) {
            QApplication::quit();
            return;
        }
        if (letter != '\n') {
            order += letter;
            return;
        }
        if (order == "show") {
            window.makeKeyAndOrderFront();
            tell(QString::number(window.winId()));
        } else if (order == "close")
            window.performClose();
        order.clear();
    });
    return QApplication::exec();
}
