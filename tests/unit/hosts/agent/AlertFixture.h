// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "hosts/agent/AlertWindowPresenter.h"
#include "hosts/agent/LaterButton.h"
#include "support/FakeClock.h"

#include <QCoreApplication>
#include <QLabel>

#include <gmock/gmock.h>

/// Alerts in windows, by a clock that the test moves. Without the agent's bundle the texts are their keys, in
/// English.
class AlertFixture : public testing::Test
{
protected:
    using Alert = std::shared_ptr<NSUserNotification>;

    AlertFixture()
    {
        dozely::Port<dozely::Clock>::current() = clock;
        presenter->setEvents({
            .shown = [this](const auto &shown) { told += "shown " + shown->title(); },
            .activated = [this](const auto &shown) { told += "activated " + shown->title(); },
            .closed = [this](const auto &shown) { told += "closed " + shown->title(); },
        });
        presenter->setLater({[](const auto &) { return true; },
                             [this](const auto &, Postponement choice) {
                                 chosen += choice;
                                 return true;
                             }});
        presenter->setDetails([this](const auto &) { return details; });
    }

    Alert alert(const QString &title, std::chrono::seconds lead = std::chrono::seconds(60)) const
    {
        auto made = std::make_shared<NSUserNotification>();
        made->setTitle(title);
        made->setInformativeText("Will run on 14 Mar 2026, 19:30.");
        made->setActionButtonTitle("Cancel");
        made->setUserInfo({{"Schedule Date", clock->currentDate().addSecs(lead.count())}});
        return made;
    }
    /// Shows it, until it can be seen in full; from now on it is half a second until it takes input.
    void show(const Alert &alert)
    {
        presenter->show(alert);
        QCoreApplication::processEvents(); // it is exposed
        clock->advance(ZDRWindow::fadeTime);
    }
    /// Lets the window take input.
    void wait() { clock->advance(InputGate::pause); }

    AlertWindow &window(const Alert &alert) const { return *presenter->window(alert); }
    /// The texts of those labels and buttons that can be seen.
    static QStringList textsOf(const AlertWindow &window)
    {
        QStringList texts;
        for (const auto *const label : window.findChildren<QLabel *>()) {
            if (label->isVisible())
                texts += label->text();
        }
        return texts;
    }
    static ZDRButton *button(const AlertWindow &window, const QString &text)
    {
        for (auto *const button : window.findChildren<ZDRButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<AlertWindowPresenter> presenter = std::make_shared<AlertWindowPresenter>();
    AlertDetails details;
    QStringList told;
    QList<Postponement> chosen;
};
