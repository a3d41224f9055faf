// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

#include <memory>

/// Reads the lines of a file that others append to, exchange or cut.
///
/// THREADING: one thread. BLOCKING: no more than a disk does; what is not a regular file is not read.
class LogReader
{
public:
    explicit LogReader(QString path);

    /// Opens the file, or the new one that took its place; an error when there is none.
    dozely::Result<void> open();

    /// The last `count` lines; reading goes on behind them.
    QList<QByteArray> lastLines(int count);

    /// The lines that were completed since the last call. A file that was cut is read from its beginning, one
    /// that was exchanged to its end, and then the new one.
    QList<QByteArray> newLines();

private:
    bool wasExchanged() const;
    void forgetBegun();
    void readRest(QList<QByteArray> &lines);

    QString m_path;
    std::unique_ptr<QFile> m_file;
    QByteArray m_begun;        // a line without its end so far
    bool m_isInPieces = false; // whether pieces of that line were given
};
