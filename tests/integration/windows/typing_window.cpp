// SPDX-License-Identifier: MIT
//
// Usage: typing_window [--full-screen] [--ground COLOUR|photograph]
//
// A window that somebody types into, nearly or really as large as the screen; or one that is of a colour, or
// looks like a bright photograph with a page of small print: the hardest ground for text. Prints "active"
// when it has the keys, "lost" when it has them no more, and "text" with what was typed whenever that
// changes.
#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScreen>
#include <QTextStream>
#include <QTimer>
#include <QVBoxLayout>

namespace
{
void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

QPixmap ground(const QString &name, const QSize &size)
{
    QPixmap picture(size);
    if (name != "photograph") {
        picture.fill(QColor(name));
        return picture;
    }
    QPainter painter(&picture);
    QLinearGradient sky(0, 0, size.width() / 4.0, size.height());
    sky.setColorAt(0, "#dff1ff");
    sky.setColorAt(0.5, "#ffffff");
    sky.setColorAt(1, "#ffe9b0");
    painter.fillRect(picture.rect(), sky);
    painter.setPen(Qt::NoPen);
    QRandomGenerator clouds(7);
    for (int cloud = 0; cloud < 400; ++cloud) {
        painter.setBrush(QColor::fromHsv(clouds.bounded(30, 220), clouds.bounded(60), 255, 110));
        painter.drawEllipse(QPoint(clouds.bounded(size.width()), clouds.bounded(size.height())),
                            clouds.bounded(10, 90), clouds.bounded(5, 40));
    }
    painter.setPen(Qt::black);
    const QString line = QString("The quick brown fox jumps over the lazy dog. ").repeated(3);
    for (int y = 20; y < size.height(); y += painter.fontMetrics().height())
        painter.drawText(size.width() / 2, y, line);
    return picture;
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
    parser.addOptions({{"full-screen", "Fills the screen."}, {"ground", "Shows it.", "GROUND"}});
    parser.process(application);
    Window window;
    auto *const text = new QPlainTextEdit;
    QObject::connect(text, &QPlainTextEdit::textChanged, &window,
                     [text] { print("text " + text->toPlainText()); });
    auto *const layout = new QVBoxLayout(&window);
    layout->setContentsMargins({});
    const QSize size = QGuiApplication::primaryScreen()->size();
    if (parser.isSet("ground")) {
        auto *const picture = new QLabel;
        picture->setPixmap(ground(parser.value("ground"), size));
        layout->addWidget(picture);
    } else {
        layout->addWidget(text);
    }
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(QGuiApplication::primaryScreen()->geometry().adjusted(0, 0, 0, -1));
    parser.isSet("full-screen") ? window.showFullScreen() : window.show();
    text->setFocus();
    // A window manager that has just begun may overhear what it is asked.
    QTimer again;
    QObject::connect(&again, &QTimer::timeout, &window,
                     [&] { window.isActiveWindow() ? again.stop() : window.activateWindow(); });
    window.activateWindow();
    again.start(500);
    return QApplication::exec();
}
