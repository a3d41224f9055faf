// SPDX-License-Identifier: MIT
//
// Usage: typing_window [--full-screen] [--picture FILE]
//
// A window that somebody types into, nearly or really as large as the screen; or, with a picture, one that shows
// it. Prints "active" when it has the keys, "lost" when it has them no more, and "text" with what was typed
// whenever that changes.
#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextStream>
#include <QVBoxLayout>

namespace
{
void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

class Window : public QWidget
{
protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::ActivationChange)
            print(isActiveWindow() ? "active" : "lost");
    }
};
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"full-screen", "Fills the screen."}, {"picture", "Shows it.", "FILE"}});
    parser.process(application);
    Window window;
    auto *const text = new QPlainTextEdit;
    QObject::connect(text, &QPlainTextEdit::textChanged, &window,
                     [text] { print("text " + text->toPlainText()); });
    auto *const layout = new QVBoxLayout(&window);
    layout->setContentsMargins({});
    if (parser.isSet("picture")) {
        auto *const picture = new QLabel;
        picture->setPixmap(QPixmap(parser.value("picture")));
        layout->addWidget(picture);
    } else {
        layout->addWidget(text);
    }
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(QGuiApplication::primaryScreen()->geometry().adjusted(0, 0, 0, -1));
    parser.isSet("full-screen") ? window.showFullScreen() : window.show();
    window.activateWindow();
    text->setFocus();
    return QApplication::exec();
}
