// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"

#include <QCheckBox>
#include <QEvent>
#include <QLineEdit>
#include <QThread>
#include <QVBoxLayout>

#include <csignal>

namespace
{
/// Raises at a press.
class Raising : public QWidget
{
public:
    using QWidget::QWidget;
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            throw NSException("Pressed", "It does not like that.");
        return QWidget::event(event);
    }
};
} // namespace

/// A configuration side with one text, "Text", which does what "Behaviour" in its bundle's Info says.
class SettingsPlugIn : public WDPrefPanePlugIn
{
    Q_OBJECT
public:
    void loadNib() override
    {
        const QString behaviour = bundle()->objectForInfoDictionaryKey("Behaviour").toString();
        if (behaviour == "hangs") {
            for (;;)
                QThread::sleep(1);
        }
        if (behaviour == "crashes")
            std::raise(SIGKILL);
        if (behaviour == "throws")
            throw NSException("Settings", "There are none today.");
        if (bundle()->objectForInfoDictionaryKey("WDEditNibFile").isValid()) {
            WDPrefPanePlugIn::loadNib();
            return;
        }
        auto *const view = behaviour == "raises when pressed" ? new Raising : new QWidget;
        auto *const layout = new QVBoxLayout(view);
        m_text = new QLineEdit;
        m_text->setObjectName("text");
        layout->addWidget(m_text);
        setSetupView(view);
    }
    void fillSetupInterfaceFromParameters() override
    {
        if (m_text)
            m_text->setText(parameters()->value("Text").toString());
    }
    void fillParametersFromSetupInterface() override
    {
        if (!m_text)
            return;
        if (bundle()->objectForInfoDictionaryKey("Behaviour").toString() == "tidies up")
            m_text->setText(m_text->text().trimmed());
        if (m_text->text().isEmpty())
            parameters()->remove("Text");
        else
            parameters()->insert("Text", m_text->text());
    }
    QVariantMap defaultParameters() const override { return {{"Text", "as usual"}}; }
    bool needsWakeUpByDefault() const override { return true; }
    QString actionString() const override { return "Say " + parameters()->value("Text").toString(); }

private:
    QPointer<QLineEdit> m_text;
};

class SettingsFactory : public QObject, public WDPlugInFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WDPlugInFactory_iid)
    Q_INTERFACES(WDPlugInFactory)
public:
    std::unique_ptr<WDPlugIn> make() override { return std::make_unique<SettingsPlugIn>(); }
};

#include "SettingsPlugIn.moc"
