// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QVariantMap>

/// An alert for the user: a title, a text and one button. Made with std::make_shared; an object, not a value:
/// delivering the same object again replaces what is shown of it. The notification centre takes the texts as
/// they are at the moment of delivery.
///
/// THREADING: the main thread.
class DOZELYKIT_EXPORT NSUserNotification
{
public:
    /// What the user did with it last.
    enum class ActivationType {
        None,
        ActionButtonClicked =
            2, ///< The button was pressed. Clicking elsewhere, or dismissing, is no activation.
    };

    NSUserNotification() = default;
    NSUserNotification(const NSUserNotification &) = delete;
    NSUserNotification &operator=(const NSUserNotification &) = delete;

    QString title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }

    /// Names the alert within its application; null unless set. Two alerts may share one.
    QString identifier() const { return m_identifier; }
    void setIdentifier(const QString &identifier) { m_identifier = identifier; }

    /// Plain text, no markup.
    QString informativeText() const { return m_informativeText; }
    void setInformativeText(const QString &text) { m_informativeText = text; }

    /// The button's label; without one no button is shown.
    QString actionButtonTitle() const { return m_actionButtonTitle; }
    void setActionButtonTitle(const QString &title) { m_actionButtonTitle = title; }

    /// A name of the desktop's sound theme ("alarm-clock-elapsed"), whose sound is played when the alert
    /// comes up, where the desktop plays any; without one, what the desktop does by itself.
    QString soundName() const { return m_soundName; }
    void setSoundName(const QString &name) { m_soundName = name; }

    /// What the application wants to know again when it is called back; shown to nobody.
    QVariantMap userInfo() const { return m_userInfo; }
    void setUserInfo(const QVariantMap &userInfo) { m_userInfo = userInfo; }

    /// Set by the notification centre before it tells its delegate.
    ActivationType activationType() const { return m_activationType; }
    void setActivationType(ActivationType type) { m_activationType = type; }

private:
    QString m_title;
    QString m_identifier;
    QString m_informativeText;
    QString m_actionButtonTitle;
    QString m_soundName;
    QVariantMap m_userInfo;
    ActivationType m_activationType = ActivationType::None;
};
