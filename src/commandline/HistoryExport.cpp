#include "commandline/HistoryExport.h"

#include "core/AtomicFile.h"
#include "core/HistoryCsv.h"
#include "core/HistoryStore.h"
#include "core/PieceStream.h"

#include <QTemporaryDir>

#include <system_error>

namespace fs = std::filesystem;

namespace {

fs::path logOf(const fs::path &database)
{
    return database.string() + "-wal";
}

// A message about the copy names the file in the data folder, not the copy.
std::string naming(std::string message, const fs::path &copy, const fs::path &original)
{
    const std::string copied = copy.string();
    for (std::size_t at = message.find(copied); at != std::string::npos;
         at = message.find(copied, at + original.string().size()))
        message.replace(at, copied.size(), original.string());
    return message;
}

// Thrown out of an atomic save to leave the target as it was.
struct ReadFailed {
    std::string message;
};

} // namespace

std::optional<std::string> exportHistoryReadOnly(const fs::path &dataDir, std::ostream &out)
{
    const fs::path database = historyPath(dataDir);
    std::error_code ec;
    if (!fs::exists(logOf(database), ec))
        return exportHistoryCsv(dataDir, out);

    const QTemporaryDir folder;
    if (!folder.isValid())
        return "A temporary folder to read the history file \"" + database.string() +
               "\" in could not be made: " + folder.errorString().toStdString() + ".";
    const fs::path copyDir = folder.path().toStdString();
    const fs::path copy = historyPath(copyDir);
    // The log first: should the program copy the log into the file meanwhile,
    // the file copied after holds those pages already, and reading them again
    // from the log changes nothing. The other way round they could be lost.
    for (const auto &[from, to] :
         {std::pair{logOf(database), logOf(copy)}, std::pair{database, copy}}) {
        fs::copy_file(from, to, ec);
        if (ec)
            return "The history file \"" + database.string() +
                   "\" could not be read: " + ec.message() + ".";
    }
    if (std::optional<std::string> problem = exportHistoryCsv(copyDir, out))
        return naming(*problem, copy, database);
    return std::nullopt;
}

std::optional<std::string> saveHistoryCsv(const fs::path &dataDir, const fs::path &file)
{
    try {
        const std::optional<FileError> error =
            writeFileAtomically(file, [&](const std::function<void(std::string_view)> &write) {
                PieceStreamBuf pieces(write);
                std::ostream out(&pieces);
                // A failed write throws from the writer; the stream passes it on.
                out.exceptions(std::ios::badbit);
                if (std::optional<std::string> problem = exportHistoryReadOnly(dataDir, out))
                    throw ReadFailed{*problem};
            });
        if (error)
            return error->message();
    } catch (const ReadFailed &failed) {
        return failed.message;
    }
    return std::nullopt;
}
