// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptPrefPanePlugIn.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"

#include <QFileDialog>
#include <QFontDatabase>

using namespace dozely;

ScriptPrefPanePlugIn::~ScriptPrefPanePlugIn()
{
    m_trial.disconnect(this);
    if (m_trial.state() == QProcess::NotRunning)
        return;
    m_trial.kill();
    m_trial.waitForFinished();
}

void ScriptPrefPanePlugIn::showOptions(const QVariantMap &parameters)
{
    // As large as what stands around it.
    QFont font = m_file->font();
    font.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    m_script->setFont(font);
    m_script->setPlainText(parameters.value(ScriptKey::script).toString());
    m_file->setText(parameters.value(ScriptKey::scriptFile).toString());
    m_shownScript = m_script->toPlainText();
    m_shownFile = m_file->text();
    m_wasFile = parameters.contains(ScriptKey::scriptFile) && !parameters.contains(ScriptKey::script);
    m_isFile->setChecked(m_wasFile);
    m_isText->setChecked(!m_wasFile);
    on_isFile_toggled(m_wasFile);
}

void ScriptPrefPanePlugIn::writeOptions(QVariantMap &parameters)
{
    const bool isFile = m_isFile->isChecked();
    const QString key = isFile ? ScriptKey::scriptFile : ScriptKey::script;
    const QString text = isFile ? m_file->text() : m_script->toPlainText();
    if (!parameters.contains(key) || text != (isFile ? m_shownFile : m_shownScript))
        parameters.insert(key, text);
    if (isFile != m_wasFile)
        parameters.remove(isFile ? ScriptKey::script : ScriptKey::scriptFile);
    m_wasFile = isFile;
    m_shownScript = m_script->toPlainText();
    m_shownFile = m_file->text();
}

void ScriptPrefPanePlugIn::askWhatIsMissing()
{
    const auto tell = [this] { tellMissing(localized("No Engine")); };
    connect(&m_trial, &QProcess::errorOccurred, this, tell);
    connect(&m_trial, &QProcess::finished, this, [tell](int status, QProcess::ExitStatus how) {
        if (status != 0 || how != QProcess::NormalExit)
            tell();
    });
    m_trial.setStandardOutputFile(QProcess::nullDevice());
    m_trial.setStandardErrorFile(QProcess::nullDevice());
    m_trial.start(RootFolder::join("/usr/bin/osascript"), {"-e", "return"});
}

QString ScriptPrefPanePlugIn::actionString() const
{
    const QVariantMap shown = parameters() ? *parameters() : QVariantMap();
    const QString file =
        shown.value(ScriptKey::scriptFile).toString().section('/', -1, -1, QString::SectionSkipEmpty);
    if (!file.isEmpty())
        return localized("Run %@").replace("%@", file);
    if (shown.value(ScriptKey::script).toString().trimmed().isEmpty())
        return SettingsPane::actionString();
    return localized("Run a script");
}

void ScriptPrefPanePlugIn::on_browse_clicked()
{
    const QString chosen = QFileDialog::getOpenFileName(setupView(), {}, m_file->text());
    if (!chosen.isEmpty())
        m_file->setText(chosen);
}

void ScriptPrefPanePlugIn::on_isFile_toggled(bool isFile)
{
    m_script->setEnabled(!isFile);
    m_file->setEnabled(isFile);
    m_browse->setEnabled(isFile);
}
