// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

/// Has the file dialog that opens next, and which waits for its end, choose a file or a folder.
inline void chooseInNextFileDialog(const QString &path)
{
    QTimer::singleShot(0, qApp, [path] {
        const QWidget *const dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        auto *const name = dialog->findChild<QLineEdit *>("fileNameEdit");
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

/// Has the file dialog that opens next end without a choice.
inline void dismissNextFileDialog()
{
    QTimer::singleShot(0, qApp, [] {
        QWidget *const dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
}
