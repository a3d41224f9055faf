// SPDX-License-Identifier: MIT
#include "WindowsGroup.h"

#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/views/ViewExtensions.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/agent/AlertWindowPresenter.h"

#include <QBoxLayout>
#include <QComboBox>
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
    alert->setUserInfo({{dozely::AlertKey::date, date}});
    return alert;
}
} // namespace

WindowsGroup::WindowsGroup(QWidget *parent)
    : QGroupBox("Windows", parent), m_alerts(std::make_unique<AlertWindowPresenter>())
{
    auto *const bezel = new QPushButton("Bezel window");
    auto *const plain = new QPushButton("Plain window");
    auto *const alert = new QPushButton("Alert");
    connect(bezel, &QPushButton::clicked, this, &WindowsGroup::showBezel);
    connect(plain, &QPushButton::clicked, this, &WindowsGroup::showPlain);
    connect(alert, &QPushButton::clicked, this, &WindowsGroup::showAlert);
    auto *const row = new QHBoxLayout(this);
    row->addWidget(bezel);
    row->addWidget(plain);
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
        auto *const fixedPoint = new QComboBox;
        fixedPoint->addItem("about its centre", ZDRWindow::AboutCenter);
        fixedPoint->addItem("about its upper right corner", ZDRWindow::AboutTopRight);
        fixedPoint->addItem("about its lower left corner", ZDRWindow::AboutBottomLeft);
        fixedPoint->setAccessibleName("Point that stays in place");
        auto *const larger = panelButton("Larger");
        auto *const smaller = panelButton("Smaller");
        auto *const close = panelButton("Close", "\x1b");
        const auto resize = [this, fixedPoint](double change) {
            m_bezel->resizeToUsingStyle(m_bezel->frame().size() + QSizeF(change, change / 2),
                                        fixedPoint->currentData().toInt());
        };
        connect(larger, &ZDRButton::clicked, m_bezel.get(), [resize] { resize(100); });
        connect(smaller, &ZDRButton::clicked, m_bezel.get(), [resize] { resize(-100); });
        connect(close, &ZDRButton::clicked, m_bezel.get(), [this, close] { m_bezel->performClose(close); });
        auto *const column = new QVBoxLayout(content);
        column->addWidget(hint);
        column->addWidget(fixedPoint);
        auto *const row = new QHBoxLayout;
        for (auto *const button : {larger, smaller, close})
            row->addWidget(button);
        column->addLayout(row);
        m_bezel->setContentView(content);
    }
    m_bezel->makeKeyAndOrderFront(this);
}

void WindowsGroup::showPlain()
{
    if (!m_plain) {
        m_plain = ZDRWindow::initWithContentRect({240, 260, 300, 150}, 0, 0, false);
        auto *const content = new QWidget;
        auto *const cleared = new QWidget(content);
        auto *const hint = new QLabel("Without a bezel only the content is seen. It fades in and out.");
        hint->setWordWrap(true);
        hint->setAutoFillBackground(true);
        (new QVBoxLayout(cleared))->addWidget(hint);
        auto *const clear = new QPushButton("Clear");
        auto *const close = new QPushButton("Close");
        close->setShortcut(Qt::Key_Escape);
        connect(clear, &QPushButton::clicked, cleared, [cleared] {
            const QList<QWidget *> views =
                cleared->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
            zandorSoftwaresExtensions::clear(cleared);
            for (QWidget *const view : views)
                view->deleteLater(); // ours now
        });
        connect(close, &QPushButton::clicked, m_plain.get(), [this, close] { m_plain->performClose(close); });
        auto *const column = new QVBoxLayout(content);
        column->addWidget(cleared, 1);
        auto *const row = new QHBoxLayout;
        row->addWidget(clear);
        row->addWidget(close);
        column->addLayout(row);
        m_plain->setContentView(content);
    }
    m_plain->makeKeyAndOrderFront(this);
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
