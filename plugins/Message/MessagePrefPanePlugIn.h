// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "plugins/common/settings/SettingsPane.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

/// Where a user writes the text that he wants to see, and chooses its sound. The view is laid out in
/// MessageSettings.ui; each property here is an outlet.
class MessagePrefPanePlugIn : public SettingsPane
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *caption MEMBER m_caption)
    Q_PROPERTY(QPlainTextEdit *text MEMBER m_text)
    Q_PROPERTY(QComboBox *sound MEMBER m_sound)
public:
    /// "Say: TEXT", its first line; "-" without one.
    QString actionString() const override;

protected:
    /// What a field cannot show as it is stays until the user changes what stands in its place.
    /// @{
    void showOptions(const QVariantMap &parameters) override;
    void writeOptions(QVariantMap &parameters) override;
    /// @}
    void askWhatIsMissing() override;

private:
    void fillSounds(const QString &chosen);

    QLineEdit *m_caption = nullptr; // the view owns these; all are null without it
    QPlainTextEdit *m_text = nullptr;
    QComboBox *m_sound = nullptr;
    QString m_shownText; // as the fields give back what they were given
    QString m_shownCaption;
    std::unique_ptr<dozely::BusConnection> m_bus;
};
