// SPDX-License-Identifier: MIT
#include "plugins/Message/MessagePrefPanePlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

namespace
{
constexpr std::chrono::seconds answerTime{10};

struct Sound {
    const char *name; ///< In the sound theme of freedesktop.org.
    const char *text;
};
constexpr Sound sounds[] = {{"", "No sound"},
                            {"message", "Message"},
                            {"bell", "Bell"},
                            {"complete", "Something is done"},
                            {"dialog-warning", "Warning"},
                            {"alarm-clock-elapsed", "Alarm clock"}};
} // namespace

void MessagePrefPanePlugIn::fillSounds(const QString &chosen)
{
    m_sound->clear();
    for (const Sound &sound : sounds)
        m_sound->addItem(localized(sound.text), QString(sound.name));
    if (m_sound->findData(chosen) < 0)
        m_sound->addItem(chosen, chosen);
    m_sound->setCurrentIndex(m_sound->findData(chosen));
}

void MessagePrefPanePlugIn::showOptions(const QVariantMap &parameters)
{
    m_caption->setText(parameters.value(MessageKey::title).toString());
    m_text->setPlainText(parameters.value(MessageKey::text).toString());
    fillSounds(parameters.value(MessageKey::sound).toString());
    m_shownCaption = m_caption->text();
    m_shownText = m_text->toPlainText();
}

void MessagePrefPanePlugIn::writeOptions(QVariantMap &parameters)
{
    if (m_caption->text() != m_shownCaption)
        parameters.insert(MessageKey::title, m_caption->text());
    if (m_text->toPlainText() != m_shownText || !parameters.contains(MessageKey::text))
        parameters.insert(MessageKey::text, m_text->toPlainText());
    const QString sound = m_sound->currentData().toString();
    if (sound != parameters.value(MessageKey::sound).toString())
        parameters.insert(MessageKey::sound, sound);
    m_shownCaption = m_caption->text();
    m_shownText = m_text->toPlainText();
}

void MessagePrefPanePlugIn::askWhatIsMissing()
{
    constexpr char service[] = "org.freedesktop.Notifications";
    auto opened = BusConnection::open(BusConnection::Bus::Session);
    if (!opened)
        return tellMissing(localized("No Notifications"));
    m_bus = *std::move(opened);
    m_bus->callLater({service, "/org/freedesktop/Notifications", service, "GetCapabilities"}, "", {},
                     answerTime, [this](const BusConnection::Reply &reply) {
                         if (!reply)
                             tellMissing(localized("No Notifications"));
                         else if (!BusConnection::firstOf(reply).toStringList().contains("sound"))
                             tellMissing(localized("No Sounds"));
                     });
}

QString MessagePrefPanePlugIn::actionString() const
{
    constexpr int longest = 60;
    const QString text = parameters() ? parameters()->value(MessageKey::text).toString() : QString();
    const QString line = text.trimmed().section('\n', 0, 0);
    if (line.isEmpty())
        return SettingsPane::actionString();
    return localized("Say: %@").replace(
        "%@", line.size() > longest ? line.left(longest).trimmed() + QChar(0x2026) : line);
}
