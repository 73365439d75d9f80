// A thin owner of SQLite's connection and statement handles: each is released
// when it goes out of scope, and every failure is thrown as an SqliteError.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

class SqliteError : public std::runtime_error {
public:
    SqliteError(int code, const std::string &message);

    // SQLite's extended result code (SQLITE_FULL, SQLITE_IOERR_WRITE, ...).
    int code() const { return m_code; }
    // The file is not a database, or its content is damaged.
    bool isDamage() const;

private:
    int m_code;
};

class SqliteStatement {
public:
    SqliteStatement(sqlite3 *db, std::string_view sql);
    ~SqliteStatement();
    SqliteStatement(SqliteStatement &&other) noexcept;
    SqliteStatement &operator=(SqliteStatement &&other) noexcept;
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    // Resets the statement and binds the values to its parameters 1, 2, ... in order.
    template <typename... Values> SqliteStatement &bindAll(const Values &...values)
    {
        reset();
        int index = 0;
        (bind(++index, values), ...);
        return *this;
    }

    // Integers (and bools), floating point, text, std::nullopt and optionals of those.
    template <typename Value> void bind(int index, const Value &value)
    {
        if constexpr (std::is_same_v<Value, std::nullopt_t>) {
            bindNull(index);
        } else if constexpr (std::is_integral_v<Value>) {
            bindInteger(index, static_cast<std::int64_t>(value));
        } else if constexpr (std::is_floating_point_v<Value>) {
            bindReal(index, static_cast<double>(value));
        } else if constexpr (std::is_convertible_v<const Value &, std::string_view>) {
            bindText(index, std::string_view(value));
        } else {
            if (value)
                bind(index, *value);
            else
                bindNull(index);
        }
    }
    void bindBlob(int index, std::string_view bytes);

    // Moves to the next row of the result; false once there is none.
    bool step();
    // Runs a statement that gives no rows.
    void run();
    void reset();

    bool isNull(int column) const;
    bool isInteger(int column) const;
    std::int64_t integer(int column) const;
    // Text and blobs stay valid until the next step or reset.
    std::string_view text(int column) const;
    std::string_view blob(int column) const;

private:
    void bindNull(int index);
    void bindInteger(int index, std::int64_t value);
    void bindReal(int index, double value);
    void bindText(int index, std::string_view text);
    void check(int result) const;

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_statement = nullptr;
};

class SqliteDatabase {
public:
    enum class Access {
        ReadWrite, // created when missing
        ReadOnly,  // reads the file and its write-ahead log as they are
        Immutable, // reads the file alone and never writes beside it
    };

    SqliteDatabase(const std::filesystem::path &path, Access access);
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;

    // Runs one or more statements that give no rows.
    void execute(const std::string &sql);
    SqliteStatement prepare(std::string_view sql);
    // A statement prepared on first use and kept, reset for new bindings. The text
    // is looked up by its address, so it must be a string literal.
    SqliteStatement &cached(const char *sql);

    // The value of a pragma that gives a single integer (user_version, page_count, ...).
    std::int64_t pragmaInteger(const char *name);
    std::int64_t lastInsertId() const;
    bool isReadOnly() const;
    sqlite3 *handle() const { return m_db; }

private:
    sqlite3 *m_db = nullptr;
    std::unordered_map<const char *, std::unique_ptr<SqliteStatement>> m_cached;
};

// A savepoint: what runs while it lives is kept by commit() and taken back when it
// is destroyed without. Inside an open transaction it nests; alone it is one.
class SqliteTransaction {
public:
    explicit SqliteTransaction(SqliteDatabase &db);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction &) = delete;
    SqliteTransaction &operator=(const SqliteTransaction &) = delete;

    void commit();

private:
    SqliteDatabase &m_db;
    bool m_done = false;
};
