// SPDX-License-Identifier: MIT
#include "hosts/common/record/Sqlite.h"

#include <QFile>

#include <sqlite3.h>

using namespace dozely;

namespace
{
/// No memory in advance for pages, of which few are ever looked at. Before the first database is opened.
void takeNoMemoryInAdvance()
{
    [[maybe_unused]] static const int once = sqlite3_config(SQLITE_CONFIG_PAGECACHE, nullptr, 0, 0);
}
} // namespace

Error Sqlite::errorOf(sqlite3 *database)
{
    const int code = database ? sqlite3_errcode(database) : SQLITE_NOMEM;
    // SQLITE_ERROR is about the statement: it names a table or column that is not there.
    const bool isDamaged = code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_ERROR;
    return {database ? QString::fromUtf8(sqlite3_errmsg(database)) : QString("no memory is left"),
            isDamaged ? QByteArray(damaged) : QByteArray()};
}

void Sqlite::Close::operator()(sqlite3 *database) const
{
    sqlite3_close_v2(database); // statements that are left finish first
}

Result<Sqlite> Sqlite::open(const QString &path, File file, std::chrono::milliseconds patience)
{
    takeNoMemoryInAdvance();
    sqlite3 *database = nullptr;
    const int access = file == File::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    const int making = file == File::MayBeMade ? SQLITE_OPEN_CREATE : 0;
    const int code = sqlite3_open_v2(QFile::encodeName(path).constData(), &database,
                                     access | SQLITE_OPEN_NOFOLLOW | making, nullptr);
    Sqlite opened;
    opened.m_database.reset(database);
    if (code != SQLITE_OK)
        return errorOf(database);
    // A file that just now could not be opened for writing, for want of a descriptor, would be opened for
    // reading, and nothing ever written.
    if (file != File::ReadOnly && sqlite3_db_readonly(database, "main") == 1)
        return Error{QString("%1 cannot be opened for writing").arg(path)};
    sqlite3_busy_timeout(database, static_cast<int>(patience.count()));
    return opened;
}

Result<void> Sqlite::run(const char *statements) const
{
    if (sqlite3_exec(m_database.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK)
        return errorOf(m_database.get());
    return {};
}

void Sqlite::releaseMemory() const
{
    sqlite3_db_release_memory(m_database.get());
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3 *database, const char *text) : m_database(database)
{
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    m_statement.reset(statement);
}

SqliteStatement &SqliteStatement::bind(int parameter, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    sqlite3_bind_text(m_statement.get(), parameter, bytes.constData(), static_cast<int>(bytes.size()),
                      SQLITE_TRANSIENT);
    return *this;
}

SqliteStatement &SqliteStatement::bind(int parameter, std::optional<qint64> number)
{
    if (number)
        sqlite3_bind_int64(m_statement.get(), parameter, *number);
    else
        sqlite3_bind_null(m_statement.get(), parameter);
    return *this;
}

SqliteStatement &SqliteStatement::bindBytes(int parameter, const QByteArray &bytes)
{
    sqlite3_bind_blob(m_statement.get(), parameter, bytes.constData(), static_cast<int>(bytes.size()),
                      SQLITE_TRANSIENT);
    return *this;
}

Result<bool> SqliteStatement::next()
{
    const int code = m_statement ? sqlite3_step(m_statement.get()) : SQLITE_ERROR;
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE) {
        sqlite3_reset(m_statement.get());
        return false;
    }
    const Error error = Sqlite::errorOf(m_database);
    if (m_statement)
        sqlite3_reset(m_statement.get());
    return error;
}

Result<void> SqliteStatement::run()
{
    for (;;) {
        const auto more = next();
        if (!more)
            return more.error();
        if (!*more)
            return {};
    }
}

QString SqliteStatement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement.get(), column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_statement.get(), column));
}

std::optional<qint64> SqliteStatement::number(int column) const
{
    if (sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL)
        return {};
    return sqlite3_column_int64(m_statement.get(), column);
}

QByteArray SqliteStatement::bytes(int column) const
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement.get(), column));
    return {bytes, sqlite3_column_bytes(m_statement.get(), column)};
}
