// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>

#include <chrono>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// One statement of a Sqlite database, to be bound and run as often as wanted. One that could not be prepared
/// fails when it is run. The database must outlive it.
class SqliteStatement
{
public:
    SqliteStatement(sqlite3 *database, const char *text);

    /// Sets the parameters ?1, ?2, ... before a run; absent is NULL.
    /// @{
    SqliteStatement &bind(int parameter, const QString &text);
    SqliteStatement &bind(int parameter, std::optional<qint64> number);
    SqliteStatement &bindBytes(int parameter, const QByteArray &bytes);
    /// @}

    /// Goes on to the next row: whether there is one. BLOCKING: for the disk.
    dozely::Result<bool> next();

    /// Runs it to its end and makes it ready for the next run.
    dozely::Result<void> run();

    /// A column of the row; absent for NULL.
    /// @{
    QString text(int column) const;
    std::optional<qint64> number(int column) const;
    QByteArray bytes(int column) const;
    /// @}

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };
    sqlite3 *m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// A database in one file (SQLite). A link in its place is not followed.
///
/// THREADING: one thread.
class Sqlite
{
public:
    /// Name of the error that says that the file is no whole database, or not the one that was expected.
    static constexpr char damaged[] = "damaged";

    enum class File { ReadOnly, MustExist, MayBeMade };

    /// Waits at most `patience` for other programs, in this and in every later operation.
    static dozely::Result<Sqlite> open(const QString &path, File file, std::chrono::milliseconds patience);

    SqliteStatement prepare(const char *text) const { return {m_database.get(), text}; }

    /// Runs one or several statements without parameters.
    dozely::Result<void> run(const char *statements) const;

    /// Keeps what `change` does if it succeeds, and nothing of it otherwise. On return the disk has it.
    template<class Change>
    dozely::Result<void> transaction(Change change) const
    {
        if (auto begun = run("BEGIN IMMEDIATE"); !begun)
            return begun;
        dozely::Result<void> done = change();
        if (done)
            done = run("COMMIT");
        if (!done)
            (void)run("ROLLBACK");
        return done;
    }

    /// Gives back what it keeps in memory of pages that can be read again.
    void releaseMemory() const;

    /// The last error.
    static dozely::Error errorOf(sqlite3 *database);

private:
    struct Close {
        void operator()(sqlite3 *database) const;
    };
    Sqlite() = default;
    std::unique_ptr<sqlite3, Close> m_database;
};
