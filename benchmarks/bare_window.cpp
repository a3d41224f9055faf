// SPDX-License-Identifier: MIT
// A window of the toolkit with nothing in it, for what any window takes.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1040, 720);
    window.show();
    return QApplication::exec();
}
