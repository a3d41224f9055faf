// SPDX-License-Identifier: MIT
#include "hosts/application/history/LogPane.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/log/LogLines.h"
#include "hosts/common/words/ReasonWords.h"

#include <QFontDatabase>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace dozely;

LogPane::LogPane(const QString &path, QWidget *parent)
    : QWidget(parent), m_path(path), m_remark(new QLabel(this)), m_lines(new QPlainTextEdit(this))
{
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_remark);
    layout->addWidget(m_lines, 1);
    m_remark->setWordWrap(true);
    m_remark->setTextFormat(Qt::PlainText);
    m_remark->hide();
    m_lines->setReadOnly(true);
    m_lines->setTabChangesFocus(true);
    m_lines->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_lines->setLayoutDirection(Qt::LeftToRight); // the log is English
    m_lines->setAccessibleName(tr("Log"));
    m_lines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusProxy(m_lines);
}

void LogPane::showLines(const QDateTime &begun, const QDateTime &ended)
{
    // What leads to an occurrence and what comes of it stand beside it.
    constexpr qint64 before = 2; // seconds
    constexpr qint64 after = 5;
    const QDateTime now = Port<Clock>::current()->currentDate();
    const QDateTime end = ended.isValid() ? ended : now;
    const auto found =
        LogLines::between(m_path, begun.addSecs(-before), end.addSecs(after), now, machineTimeZone());
    QStringList lines;
    for (const QByteArray &line : found ? found->lines : QList<QByteArray>())
        lines += logLabel(QString::fromUtf8(line), wholeText, LineBreaks::Escapes);
    m_lines->setPlainText(lines.join('\n'));
    const QString remark = !found ? tr("The log cannot be read: %1.").arg(ReasonWords::of(found.error().text))
                           : lines.isEmpty() ? tr("The log has nothing of that time.")
                           : found->hasMore
                               ? tr("These are the first %1 lines.").arg(locale().toString(lines.size()))
                               : QString();
    m_remark->setText(remark);
    m_remark->setVisible(!remark.isEmpty());
}
