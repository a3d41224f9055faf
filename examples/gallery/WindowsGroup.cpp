// SPDX-License-Identifier: MIT
#include "WindowsGroup.h"

#include "hosts/agent/AlertWindowPresenter.h"
#include "interface/ZDRButton.h"
#include "interface/ZDRProgressIndicator.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>

namespace
{
ZDRButton *panelButton(const QString &title, const QString &key = {})
{
    auto *const button = new ZDRButton(title);
    button->setKeyEquivalent(key);
    button->resize(button->sizeHint());
    button->setFixedHeight(button->height());
    button->awakeFromNib();
    return button;
}

std::shared_ptr<NSUserNotification> alertInSeconds(int seconds)
{
    const QDateTime date = QDateTime::currentDateTime().addSecs(seconds);
    auto alert = std::make_shared<NSUserNotification>();
    alert->setTitle("Evening backup");
    alert->setInformativeText("Will run on " +
                              QLocale(QLocale::English).toString(date, "MMM d, yyyy, hh:mm") + ".");
    alert->setActionButtonTitle("Cancel");
    alert->setUserInfo({{"Schedule Date", date}});
    return alert;
}
} // namespace

WindowsGroup::WindowsGroup(QWidget *parent)
    : QGroupBox("Windows", parent), m_alerts(std::make_unique<AlertWindowPresenter>())
{
    auto *const bezel = new QPushButton("Show a bezel window");
    auto *const alert = new QPushButton("Show an alert");
    connect(bezel, &QPushButton::clicked, this, &WindowsGroup::showBezel);
    connect(alert, &QPushButton::clicked, this, &WindowsGroup::showAlert);
    auto *const row = new QHBoxLayout(this);
    row->addWidget(bezel);
    row->addWidget(alert);
}

WindowsGroup::~WindowsGroup() = default;

void WindowsGroup::showBezel()
{
    if (!m_bezel) {
        m_bezel = ZDRBezelWindow::initWithContentRect({200, 300, 320, 170}, 0, 0, false);
        auto *const content = new QWidget;
        auto *const hint = new QLabel("Drag me; resize me from the lower right corner.");
        hint->setWordWrap(true);
        hint->setStyleSheet("color: white");
        auto *const larger = panelButton("Larger");
        auto *const smaller = panelButton("Smaller");
        auto *const close = panelButton("Close", "\x1b");
        const auto resize = [this](double change) {
            m_bezel->resizeToUsingStyle(m_bezel->frame().size() + QSizeF(change, change / 2),
                                        ZDRWindow::AboutCenter);
        };
        connect(larger, &ZDRButton::clicked, m_bezel.get(), [resize] { resize(100); });
        connect(smaller, &ZDRButton::clicked, m_bezel.get(), [resize] { resize(-100); });
        connect(close, &ZDRButton::clicked, m_bezel.get(), [this, close] { m_bezel->performClose(close); });
        auto *const column = new QVBoxLayout(content);
        column->addWidget(hint);
        auto *const row = new QHBoxLayout;
        for (auto *const button : {larger, smaller, close})
            row->addWidget(button);
        column->addLayout(row);
        m_bezel->setContentView(content);
    }
    m_bezel->makeKeyAndOrderFront(this);
}

void WindowsGroup::showAlert()
{
    m_alerts->show(alertInSeconds(20));
}

QImage WindowsGroup::pictureOfAlert() const
{
    AlertWindow window;
    window.fill(*alertInSeconds(75));
    window.show();
    QCoreApplication::processEvents();
    window.findChild<ZDRProgressIndicator *>()->setFloatValue(50); // some time later
    constexpr int margin = 24;
    QImage image((window.size() + QSize(2 * margin, 2 * margin)) * 2, QImage::Format_RGB32);
    image.setDevicePixelRatio(2);
    QPainter painter(&image);
    QLinearGradient desktop(0, 0, window.width(), window.height());
    desktop.setColorAt(0, "#5d7fa8");
    desktop.setColorAt(1, "#a8b7a0");
    painter.fillRect(image.rect(), desktop);
    window.render(&painter, {margin, margin}, {}, QWidget::DrawChildren);
    return image;
}
