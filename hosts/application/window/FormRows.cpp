// SPDX-License-Identifier: MIT
#include "hosts/application/window/FormRows.h"

#include <QLabel>

#include <algorithm>

QFormLayout *FormRows::make()
{
    auto *const form = new QFormLayout;
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(10);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setFormAlignment(Qt::AlignLeading | Qt::AlignTop);
    form->setLabelAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    return form;
}

void FormRows::add(QFormLayout &form, const QString &label, QWidget *field)
{
    auto *const text = new QLabel(label);
    text->setBuddy(field);
    form.addRow(text, field);
    QString name = label;
    field->setAccessibleName(name.remove('&').remove(':'));
}

void FormRows::addBeside(QFormLayout &form, QWidget *field)
{
    form.addRow(new QLabel, field);
}

void FormRows::align(const QList<QFormLayout *> &forms)
{
    QList<QLabel *> labels;
    for (const QFormLayout *const form : forms) {
        for (int row = 0; row < form->rowCount(); ++row) {
            QLayoutItem *const item = form->itemAt(row, QFormLayout::LabelRole);
            if (auto *const label = item ? qobject_cast<QLabel *>(item->widget()) : nullptr)
                labels += label;
        }
    }
    int width = 0;
    for (QLabel *const label : std::as_const(labels)) {
        label->setMinimumWidth(0);
        width = std::max(width, label->sizeHint().width());
    }
    for (QLabel *const label : std::as_const(labels))
        label->setMinimumWidth(width);
}
