#include "core/HistoryBackups.h"

#include "core/History.h"
#include "core/HistorySchema.h"
#include "core/HistoryStore.h"
#include "core/Sqlite.h"

#include <string>

namespace fs = std::filesystem;

namespace {

// 1234567 -> "1,234,567": a history's answers run into the millions.
std::string grouped(std::int64_t count)
{
    std::string digits = std::to_string(count);
    for (auto at = static_cast<std::ptrdiff_t>(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), ",");
    return digits;
}

} // namespace

void addHistorySource(Backups &backups, History &history, const fs::path &dataDir,
                      std::uint64_t maxBytes)
{
    if (!history.isOn())
        return;
    BackupSource source;
    source.file = DataFile::History;
    source.label = "History";
    source.path = historyPath(dataDir);
    source.maxBytes = maxBytes;
    // Never a plain copy of the file: the open database may be halfway through
    // a commit, and recent answers may be in its log only.
    source.copy = [&history](const fs::path &to) { return history.backUpTo(to); };
    source.restore = [&history](const fs::path &from) { return history.restoreFrom(from); };
    source.summarise = summariseHistoryCopy;
    backups.addSource(std::move(source));
}

BackupSummary summariseHistoryCopy(const fs::path &copy)
{
    std::error_code missing;
    if (!fs::is_regular_file(copy, missing))
        return {false, "The copy \"" + copy.string() + "\" is missing."};
    try {
        SqliteDatabase db(copy, SqliteDatabase::Access::Immutable);
        const std::int64_t version = db.pragmaInteger("user_version");
        if (version < 1 || version > HistorySchemaVersion)
            return {false, "The copy \"" + copy.string() + "\" is not a history Tavrino reads."};
        SqliteStatement count = db.prepare("SELECT count(*) FROM answer");
        count.step();
        const std::int64_t answers = count.integer(0);
        return {true, grouped(answers) + (answers == 1 ? " answer" : " answers")};
    } catch (const SqliteError &error) {
        return {false, "The copy \"" + copy.string() + "\" cannot be read: " + error.what() + "."};
    }
}
