#include "core/HistoryStore.h"

#include "core/FileSystem.h"
#include "core/HistorySchema.h"
#include "core/Sqlite.h"

#include <sqlite3.h>

#include <cstring>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// The size of the log at which it is copied into the file, as SQLite does by
// default: about 4 MB.
constexpr int CheckpointPages = 1000;

std::string quoted(const fs::path &path)
{
    return "\"" + path.u8string() + "\"";
}

fs::path beside(const fs::path &file, const std::string &suffix)
{
    fs::path named = file;
    named += suffix;
    return named;
}

// A file SQLite would take for a database starts with these 16 bytes. An empty
// file is a database not yet written.
std::optional<std::string> headerProblem(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    char header[16] = {};
    in.read(header, sizeof header);
    if (in.gcount() == 0)
        return std::nullopt;
    if (in.gcount() < std::streamsize(sizeof header) ||
        std::memcmp(header, "SQLite format 3", sizeof header) != 0)
        return "it is not a database";
    return std::nullopt;
}

fs::path freeDamagedCopyPath(const fs::path &dataDir)
{
    std::error_code ec;
    fs::path candidate = dataDir / "Tavrino_History.damaged.db";
    for (int number = 2; fs::exists(candidate, ec); ++number)
        candidate = dataDir / ("Tavrino_History.damaged." + std::to_string(number) + ".db");
    return candidate;
}

std::string causeOf(const SqliteError &error)
{
    switch (error.code() & 0xFF) {
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return "the folder or the file is read-only";
    case SQLITE_CANTOPEN:
        return "the file could not be opened or created (the folder may be read-only)";
    case SQLITE_IOERR:
        return "the disk reported an error";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "another program kept the file locked";
    default:
        return error.what();
    }
}

// Tests left running by a program that ended mid-test are closed as interrupted,
// with the rights and wrongs their answers show.
void closeRunningTests(SqliteDatabase &db)
{
    db.execute(R"sql(
        UPDATE test SET
            ending = 2,
            rights = (SELECT count(*) FROM answer WHERE test_id = test.id AND correct = 1),
            wrongs = (SELECT count(*) FROM answer WHERE test_id = test.id AND correct = 0),
            score = (SELECT coalesce(sum(2 * correct - 1), 0) FROM answer WHERE test_id = test.id)
        WHERE ending IS NULL
    )sql");
}

void copyDatabase(SqliteDatabase &from, SqliteDatabase &to)
{
    sqlite3_backup *backup = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
    if (!backup) {
        const int code = sqlite3_extended_errcode(to.handle());
        throw SqliteError(code, sqlite3_errmsg(to.handle()));
    }
    sqlite3_backup_step(backup, -1);
    const int result = sqlite3_backup_finish(backup);
    if (result != SQLITE_OK)
        throw SqliteError(sqlite3_extended_errcode(to.handle()), sqlite3_errmsg(to.handle()));
}

} // namespace

fs::path historyPath(const fs::path &dataDir)
{
    return dataDir / "Tavrino_History.db";
}

HistoryStore::HistoryStore(const fs::path &dataDir)
    : m_dataDir(dataDir), m_path(historyPath(dataDir))
{
    open();
}

HistoryStore::~HistoryStore() = default;

std::optional<std::string> HistoryStore::takeMessage()
{
    if (m_messages.empty())
        return std::nullopt;
    std::string message = std::move(m_messages.front());
    m_messages.pop_front();
    return message;
}

void HistoryStore::open()
{
    if (const std::optional<std::string> problem = headerProblem(m_path)) {
        if (!setAside(*problem))
            return;
    }
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            connect();
            return;
        } catch (const SqliteError &error) {
            m_db.reset();
            if (!error.isDamage() || attempt == 1) {
                turnOff(error);
                return;
            }
            if (!setAside(error.what()))
                return;
        }
    }
}

void HistoryStore::connect()
{
    auto db = std::make_unique<SqliteDatabase>(m_path, SqliteDatabase::Access::ReadWrite);
    if (db->isReadOnly())
        throw SqliteError(SQLITE_READONLY, "read-only");
    db->execute("PRAGMA busy_timeout = 2000");
    if (db->pragmaInteger("user_version") > HistorySchemaVersion) {
        m_messages.push_back("The history file " + quoted(m_path) +
                             " was written by a newer version of Tavrino. Tests go on and "
                             "scores are still saved, but answers are not recorded by this "
                             "version.");
        return;
    }
    // Write-ahead logging with NORMAL syncing: a commit is a write into the log,
    // which survives the program being killed at any moment; only a power cut
    // may lose the last answers, and it never damages the file. Syncing every
    // answer to disk would cost more than an answer may take.
    db->execute("PRAGMA journal_mode = WAL");
    db->execute("PRAGMA synchronous = NORMAL");
    // A deleted student's answers are overwritten in the file, not only unlinked.
    db->execute("PRAGMA secure_delete = ON");
    upgradeHistorySchema(*db);
    closeRunningTests(*db);
    // Copying the log into the file is done here rather than by SQLite, so that
    // it can wait for the end of a test.
    sqlite3_wal_hook(db->handle(), &HistoryStore::onCommit, this);
    m_logPages = 0;
    m_db = std::move(db);
}

int HistoryStore::onCommit(void *store, sqlite3 *db, const char *name, int logPages)
{
    auto *self = static_cast<HistoryStore *>(store);
    self->m_logPages = logPages;
    // A failed copy is no failure of the commit; it is tried again later.
    if (!self->m_checkpointsHeld && logPages >= CheckpointPages)
        sqlite3_wal_checkpoint_v2(db, name, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    return SQLITE_OK;
}

void HistoryStore::holdCheckpoints(bool hold)
{
    m_checkpointsHeld = hold;
    if (!hold && m_logPages >= CheckpointPages && !m_inBatch) {
        guarded([](SqliteDatabase &db) { db.execute("PRAGMA wal_checkpoint(PASSIVE)"); });
        m_logPages = 0;
    }
}

bool HistoryStore::setAside(const std::string &reason)
{
    m_db.reset();
    m_inBatch = false;
    const fs::path copy = freeDamagedCopyPath(m_dataDir);
    std::error_code ec;
    fs::rename(m_path, copy, ec);
    if (ec) {
        m_messages.push_back("The history file " + quoted(m_path) + " is damaged (" + reason +
                             ") and could not be moved aside (" + ec.message() +
                             "). Tests go on and scores are still saved, but answers are not "
                             "recorded until Tavrino is started again.");
        return false;
    }
    // The log beside a damaged file belongs to it; left here, it would be read
    // into the new database.
    std::error_code ignored;
    if (fs::exists(beside(m_path, "-wal"), ignored))
        fs::rename(beside(m_path, "-wal"), beside(copy, "-wal"), ignored);
    fs::remove(beside(m_path, "-shm"), ignored);
    m_messages.push_back("The history file " + quoted(m_path) + " is damaged (" + reason +
                         ") and was moved to " + quoted(copy) +
                         ". A new, empty history was started; tests and scores are not "
                         "affected.");
    return true;
}

void HistoryStore::turnOff(const SqliteError &error)
{
    m_db.reset();
    m_inBatch = false;
    m_messages.push_back("The history of answers could not be written to " + quoted(m_path) + ": " +
                         causeOf(error) +
                         ". Tests go on and scores are still saved, but answers are not "
                         "recorded until Tavrino is started again.");
}

void HistoryStore::fail(const SqliteError &error)
{
    if (!error.isDamage()) {
        turnOff(error);
        return;
    }
    ++m_generation;
    if (!setAside(error.what()))
        return;
    try {
        connect();
    } catch (const SqliteError &again) {
        m_db.reset();
        turnOff(again);
    }
}

bool HistoryStore::write(const std::function<void(SqliteDatabase &)> &work)
{
    return guarded([&work](SqliteDatabase &db) {
        SqliteTransaction transaction(db);
        work(db);
        transaction.commit();
    });
}

bool HistoryStore::read(const std::function<void(SqliteDatabase &)> &work)
{
    return guarded(work);
}

bool HistoryStore::guarded(const std::function<void(SqliteDatabase &)> &work)
{
    if (!m_db)
        return false;
    try {
        work(*m_db);
        return true;
    } catch (const SqliteError &error) {
        fail(error);
    } catch (const std::exception &error) {
        fail(SqliteError(SQLITE_ERROR, error.what()));
    }
    return false;
}

void HistoryStore::checkpoint()
{
    if (!m_inBatch)
        guarded([](SqliteDatabase &db) { db.execute("PRAGMA wal_checkpoint(TRUNCATE)"); });
}

void HistoryStore::beginBatch()
{
    if (!m_inBatch)
        m_inBatch = guarded([](SqliteDatabase &db) { db.execute("BEGIN"); });
}

void HistoryStore::endBatch()
{
    if (m_inBatch) {
        m_inBatch = false;
        guarded([](SqliteDatabase &db) { db.execute("COMMIT"); });
    }
}

std::optional<std::string> HistoryStore::backUpTo(const fs::path &file)
{
    if (!m_db)
        return "The history is turned off, so there is nothing to copy.";
    const fs::path partial = beside(file, ".partial");
    std::error_code ec;
    fs::remove(partial, ec);
    try {
        {
            SqliteDatabase copy(partial, SqliteDatabase::Access::ReadWrite);
            copyDatabase(*m_db, copy);
            // The copy is a single file, without a log beside it.
            copy.execute("PRAGMA journal_mode = DELETE");
        }
        if (const int error = replaceFile(partial, file))
            throw SqliteError(SQLITE_CANTOPEN, systemErrorText(error));
        syncDirectory(file.parent_path());
        return std::nullopt;
    } catch (const SqliteError &error) {
        fs::remove(partial, ec);
        return "The history could not be copied to " + quoted(file) + ": " + causeOf(error) + ".";
    }
}

std::optional<std::string> HistoryStore::restoreFrom(const fs::path &file)
{
    if (!m_db)
        return "The history is turned off, so it cannot be restored.";
    std::unique_ptr<SqliteDatabase> copy;
    try {
        std::error_code ec;
        if (!fs::is_regular_file(file, ec))
            throw SqliteError(SQLITE_CANTOPEN, "the file is missing");
        copy = std::make_unique<SqliteDatabase>(file, SqliteDatabase::Access::ReadOnly);
        SqliteStatement check = copy->prepare("PRAGMA quick_check");
        if (!check.step() || check.text(0) != "ok")
            throw SqliteError(SQLITE_CORRUPT, "the copy is damaged");
        check.reset();
        const std::int64_t version = copy->pragmaInteger("user_version");
        if (version < 1 || version > HistorySchemaVersion)
            throw SqliteError(SQLITE_NOTADB, "it is not a copy of a history this version reads");
    } catch (const SqliteError &error) {
        return "The history was not restored from " + quoted(file) + ": " +
               (error.isDamage() ? std::string(error.what()) : causeOf(error)) + ".";
    }
    const bool restored = guarded([&](SqliteDatabase &db) {
        copyDatabase(*copy, db);
        ++m_generation;
        upgradeHistorySchema(db);
        closeRunningTests(db);
    });
    if (!restored)
        return "The history could not be restored from " + quoted(file) + ".";
    return std::nullopt;
}
