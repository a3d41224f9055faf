// SPDX-License-Identifier: MIT
#pragma once

#include <QFormLayout>
#include <QList>

class QWidget;

/// Rows of a form, as all cards have them.
namespace FormRows
{
/// An empty form whose labels stand before their fields, and above them where there is too little room.
QFormLayout *make();

/// A row with its label, which is the field's buddy and its accessible name.
void add(QFormLayout &form, const QString &label, QWidget *field);

/// A row of its own field, without a label, below the other fields.
void addBeside(QFormLayout &form, QWidget *field);

/// Makes the labels of several forms equally wide, so that their fields stand below each other.
void align(const QList<QFormLayout *> &forms);
} // namespace FormRows
