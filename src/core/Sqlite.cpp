#include "core/Sqlite.h"

#include <sqlite3.h>

#include <utility>

namespace {

std::string describe(sqlite3 *db, int code)
{
    if (db && sqlite3_errcode(db) == code)
        return sqlite3_errmsg(db);
    return sqlite3_errstr(code);
}

// Escapes a path for a "file:" URI, which takes '%', '?' and '#' as its own.
std::string fileUri(const std::filesystem::path &path)
{
    std::string uri = "file:";
    // UTF-8 with forward slashes, as SQLite reads a URI on every system.
    for (const char c : path.generic_u8string()) {
        if (c == '%' || c == '?' || c == '#') {
            static constexpr char Hex[] = "0123456789ABCDEF";
            uri += '%';
            uri += Hex[static_cast<unsigned char>(c) >> 4];
            uri += Hex[static_cast<unsigned char>(c) & 0xF];
        } else {
            uri += c;
        }
    }
    return uri;
}

} // namespace

SqliteError::SqliteError(int code, const std::string &message)
    : std::runtime_error(message), m_code(code)
{
}

bool SqliteError::isDamage() const
{
    const int primary = m_code & 0xFF;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

SqliteStatement::SqliteStatement(sqlite3 *db, std::string_view sql) : m_db(db)
{
    check(sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                             SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr));
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

SqliteStatement::SqliteStatement(SqliteStatement &&other) noexcept
    : m_db(other.m_db), m_statement(std::exchange(other.m_statement, nullptr))
{
}

SqliteStatement &SqliteStatement::operator=(SqliteStatement &&other) noexcept
{
    if (this != &other) {
        sqlite3_finalize(m_statement);
        m_db = other.m_db;
        m_statement = std::exchange(other.m_statement, nullptr);
    }
    return *this;
}

void SqliteStatement::check(int result) const
{
    if (result != SQLITE_OK)
        throw SqliteError(result, describe(m_db, result));
}

void SqliteStatement::bindNull(int index)
{
    check(sqlite3_bind_null(m_statement, index));
}

void SqliteStatement::bindInteger(int index, std::int64_t value)
{
    check(sqlite3_bind_int64(m_statement, index, value));
}

void SqliteStatement::bindReal(int index, double value)
{
    check(sqlite3_bind_double(m_statement, index, value));
}

void SqliteStatement::bindText(int index, std::string_view text)
{
    check(sqlite3_bind_text64(m_statement, index, text.data(), text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void SqliteStatement::bindBlob(int index, std::string_view bytes)
{
    check(sqlite3_bind_blob64(m_statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
}

bool SqliteStatement::step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result == SQLITE_DONE)
        return false;
    // The step's own error stays with the statement until it is reset.
    const int code = sqlite3_extended_errcode(m_db);
    const std::string message = sqlite3_errmsg(m_db);
    sqlite3_reset(m_statement);
    throw SqliteError(code, message);
}

void SqliteStatement::run()
{
    while (step()) {
    }
}

void SqliteStatement::reset()
{
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

bool SqliteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

bool SqliteStatement::isInteger(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_INTEGER;
}

std::int64_t SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

std::string_view SqliteStatement::text(int column) const
{
    const auto *text = sqlite3_column_text(m_statement, column);
    const int bytes = sqlite3_column_bytes(m_statement, column);
    return text ? std::string_view(reinterpret_cast<const char *>(text), std::size_t(bytes))
                : std::string_view();
}

std::string_view SqliteStatement::blob(int column) const
{
    const void *bytes = sqlite3_column_blob(m_statement, column);
    const int size = sqlite3_column_bytes(m_statement, column);
    return bytes ? std::string_view(static_cast<const char *>(bytes), std::size_t(size))
                 : std::string_view();
}

SqliteDatabase::SqliteDatabase(const std::filesystem::path &path, Access access)
{
    int flags = SQLITE_OPEN_URI;
    std::string name = fileUri(path);
    switch (access) {
    case Access::ReadWrite:
        flags |= SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
        break;
    case Access::ReadOnly:
        flags |= SQLITE_OPEN_READONLY;
        break;
    case Access::Immutable:
        flags |= SQLITE_OPEN_READONLY;
        name += "?immutable=1";
        break;
    }
    const int result = sqlite3_open_v2(name.c_str(), &m_db, flags, nullptr);
    if (result != SQLITE_OK) {
        const SqliteError error(m_db ? sqlite3_extended_errcode(m_db) : result,
                                describe(m_db, result));
        sqlite3_close_v2(m_db);
        throw error;
    }
    sqlite3_extended_result_codes(m_db, 1);
}

SqliteDatabase::~SqliteDatabase()
{
    m_cached.clear();
    sqlite3_close_v2(m_db);
}

void SqliteDatabase::execute(const std::string &sql)
{
    char *message = nullptr;
    const int result = sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &message);
    if (result != SQLITE_OK) {
        const std::string text = message ? message : sqlite3_errstr(result);
        sqlite3_free(message);
        throw SqliteError(sqlite3_extended_errcode(m_db), text);
    }
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql)
{
    return SqliteStatement(m_db, sql);
}

SqliteStatement &SqliteDatabase::cached(const char *sql)
{
    std::unique_ptr<SqliteStatement> &statement = m_cached[sql];
    if (!statement)
        statement = std::make_unique<SqliteStatement>(m_db, sql);
    else
        statement->reset();
    return *statement;
}

std::int64_t SqliteDatabase::pragmaInteger(const char *name)
{
    SqliteStatement statement(m_db, std::string("PRAGMA ") + name);
    return statement.step() ? statement.integer(0) : 0;
}

std::int64_t SqliteDatabase::lastInsertId() const
{
    return sqlite3_last_insert_rowid(m_db);
}

bool SqliteDatabase::isReadOnly() const
{
    return sqlite3_db_readonly(m_db, "main") == 1;
}

SqliteTransaction::SqliteTransaction(SqliteDatabase &db) : m_db(db)
{
    m_db.execute("SAVEPOINT work");
}

SqliteTransaction::~SqliteTransaction()
{
    if (m_done)
        return;
    // Taking back what a failed step wrote cannot fail in a way worth reporting:
    // the step's own error is already on its way to the caller.
    sqlite3_exec(m_db.handle(), "ROLLBACK TO work; RELEASE work", nullptr, nullptr, nullptr);
}

void SqliteTransaction::commit()
{
    m_db.execute("RELEASE work");
    m_done = true;
}
