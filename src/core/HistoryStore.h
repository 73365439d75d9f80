// The history database file and what happens when it fails. A file that is not
// a database or is damaged is moved aside and a new one started; any other
// failure (a read-only folder, a full disk) turns the history off, after which
// every call does nothing. Either is told to the teacher once, and never thrown
// into a test.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class SqliteDatabase;
class SqliteError;
struct sqlite3;

class HistoryStore {
public:
    // Opens dataDir/Tavrino_History.db, creating it when missing and upgrading an
    // older one. Cheap on a large file: only its header and schema are read.
    explicit HistoryStore(const std::filesystem::path &dataDir);
    ~HistoryStore();
    HistoryStore(const HistoryStore &) = delete;
    HistoryStore &operator=(const HistoryStore &) = delete;

    bool isOn() const { return m_db != nullptr; }
    // The next message for the teacher, each given once.
    std::optional<std::string> takeMessage();

    // Runs work in a transaction and commits it. A failure takes the work back,
    // is handled as above and gives false; when off, nothing runs.
    bool write(const std::function<void(SqliteDatabase &)> &work);
    // The same for work that only reads.
    bool read(const std::function<void(SqliteDatabase &)> &work);

    // Goes up each time the database is replaced (set aside, or restored from a
    // copy), so that whoever holds ids from it looks them up again.
    std::uint64_t generation() const { return m_generation; }

    // Writes what the write-ahead log holds into the file and empties the log, so
    // that erased history lingers in neither.
    void checkpoint();

    // While held (a test is being taken), no commit waits for the log to be copied
    // into the file, which takes a disk flush; the copy is made when released.
    void holdCheckpoints(bool hold);

    // While a batch is open, commits are held back and made together at its end.
    void beginBatch();
    void endBatch();

    // A copy of the database, written beside file and renamed over it when whole.
    std::optional<std::string> backUpTo(const std::filesystem::path &file);
    // Replaces the whole history with a copy made by backUpTo (upgraded when
    // older); the copy is checked first and a bad one leaves the history as it was.
    std::optional<std::string> restoreFrom(const std::filesystem::path &file);

    const std::filesystem::path &path() const { return m_path; }

private:
    void open();
    void connect();
    // Runs work outside any transaction of its own, handling a failure as above.
    bool guarded(const std::function<void(SqliteDatabase &)> &work);
    void fail(const SqliteError &error);
    void turnOff(const SqliteError &error);
    bool setAside(const std::string &reason);
    static int onCommit(void *store, sqlite3 *db, const char *name, int logPages);

    std::filesystem::path m_dataDir;
    std::filesystem::path m_path;
    std::unique_ptr<SqliteDatabase> m_db;
    std::deque<std::string> m_messages;
    std::uint64_t m_generation = 0;
    bool m_inBatch = false;
    bool m_checkpointsHeld = false;
    int m_logPages = 0;
};

// The file the history is kept in, inside the data directory.
std::filesystem::path historyPath(const std::filesystem::path &dataDir);
