// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleHeader.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace
{
constexpr int iconSize = 44;
constexpr double nameScale = 1.35; // of the usual size of a font
constexpr int longestName = 500;   // characters, as the daemon takes it
} // namespace

ScheduleHeader::ScheduleHeader(QWidget *parent)
    : QWidget(parent),
      m_icon(new QLabel),
      m_description(new QLabel),
      m_name(new QLineEdit),
      m_enabled(new QCheckBox(tr("Switched &on")))
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(14);
    m_icon->setFixedSize(iconSize, iconSize);
    row->addWidget(m_icon);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(4);
    QFont large = m_name->font();
    if (large.pixelSize() > 0)
        large.setPixelSize(qRound(large.pixelSize() * nameScale));
    else
        large.setPointSizeF(large.pointSizeF() * nameScale);
    large.setWeight(QFont::DemiBold);
    m_name->setFont(large);
    m_name->setObjectName("name");
    m_name->setAccessibleName(tr("Name of the schedule"));
    m_name->setPlaceholderText(tr("Name of the schedule"));
    m_name->setMaxLength(longestName);
    texts->addWidget(m_name);
    m_description->setObjectName("description");
    m_description->setForegroundRole(QPalette::PlaceholderText);
    m_description->setTextFormat(Qt::PlainText);
    m_description->setWordWrap(true);
    texts->addWidget(m_description);
    row->addLayout(texts, 1);
    m_enabled->setObjectName("enabled");
    row->addWidget(m_enabled, 0, Qt::AlignTop);

    // Not "edited" alone, which is what is typed: who uses a screen reader may have it written.
    connect(m_name, &QLineEdit::textChanged, this, &ScheduleHeader::nameEdited);
    connect(m_enabled, &QCheckBox::toggled, this, &ScheduleHeader::enabledEdited);
}

void ScheduleHeader::showAction(const QIcon &icon, const QString &description)
{
    m_icon->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    m_description->setText(description);
}

void ScheduleHeader::showSchedule(const QString &name, bool isEnabled)
{
    const QSignalBlocker blockers[]{QSignalBlocker(m_name), QSignalBlocker(m_enabled)};
    if (m_name->text() != name) {
        m_name->setText(name);
        m_name->setCursorPosition(0); // of a long one the beginning is seen
    }
    m_enabled->setChecked(isEnabled);
}

void ScheduleHeader::editName()
{
    m_name->setFocus(Qt::OtherFocusReason);
    m_name->selectAll();
}
