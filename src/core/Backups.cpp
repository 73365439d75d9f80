#include "core/Backups.h"

#include "core/AtomicFile.h"
#include "core/BackupNames.h"
#include "core/FileSystem.h"
#include "core/HistoryClock.h"
#include "core/ReadFile.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace {

// Names in messages are UTF-8 on every system.
std::string quoted(const std::string &name)
{
    return "\"" + name + "\"";
}

std::string quoted(const fs::path &path)
{
    return quoted(path.u8string());
}

// Within a second the numbers order one file's copies; the copies of
// different files made in the same second are listed file by file.
bool newerFirst(const Backup &a, const Backup &b)
{
    if (a.made != b.made) {
        return a.made > b.made;
    }
    if (a.file != b.file) {
        return a.file < b.file;
    }
    return a.sequence > b.sequence;
}

LocalSeconds secondsOf(std::int64_t milliseconds)
{
    return milliseconds >= 0 ? milliseconds / 1000 : -((-milliseconds + 999) / 1000);
}

// The name of a copy that a killed process left as a temporary file: what
// precedes ".tmp" in it, when that names a copy of source.
std::optional<std::string> unfinishedCopyOf(const std::string &name, const BackupSource &source)
{
    const std::size_t mark = name.rfind(".tmp");
    if (mark == std::string::npos) {
        return std::nullopt;
    }
    std::string copy = name.substr(0, mark);
    if (!parseBackupFileName(copy, source.path.stem().u8string(),
                             source.path.extension().u8string())) {
        return std::nullopt;
    }
    return copy;
}

std::string describeCopyFailure(const FileError &error)
{
    if (error.kind == FileError::Kind::Unwritable) {
        return "the copy " + quoted(error.path) + " could not be written: " + error.cause + ".";
    }
    return error.message();
}

} // namespace

std::optional<FileError> copyFileAtomically(const fs::path &from, const fs::path &to)
{
    FileReader in(from);
    if (in.missing() || in.error()) {
        return in.error()
                   ? *in.error()
                   : FileError{
                         FileError::Kind::Unreadable, from.u8string(), systemErrorText(ENOENT), {}};
    }
    try {
        return writeFileAtomically(to, [&in](const std::function<void(std::string_view)> &write) {
            const auto piece = std::make_unique<char[]>(SavePieceBytes);
            while (const std::size_t got = in.read(piece.get(), SavePieceBytes)) {
                write(std::string_view(piece.get(), got));
            }
        });
    } catch (const FileReadFailed &failure) {
        return FileError{FileError::Kind::Unreadable, from.u8string(), failure.what(), {}};
    }
}

bool sameBytes(const fs::path &a, const fs::path &b)
{
    FileReader first(a);
    FileReader second(b);
    if (first.missing() || second.missing() || first.error() || second.error() ||
        first.size() != second.size()) {
        return false;
    }
    constexpr std::size_t Piece = SavePieceBytes;
    const auto one = std::make_unique<char[]>(Piece);
    const auto other = std::make_unique<char[]>(Piece);
    try {
        for (;;) {
            const std::size_t got = first.read(one.get(), Piece);
            std::size_t matched = 0;
            while (matched < got) {
                const std::size_t more = second.read(other.get() + matched, got - matched);
                if (more == 0) {
                    return false;
                }
                matched += more;
            }
            if (got == 0) {
                return second.read(other.get(), 1) == 0;
            }
            if (!std::equal(one.get(), one.get() + got, other.get())) {
                return false;
            }
        }
    } catch (const FileReadFailed &) {
        return false;
    }
}

Backups::Backups(fs::path folder, HistoryClock &clock) : m_folder(std::move(folder)), m_clock(clock)
{
}

void Backups::addSource(BackupSource source)
{
    const bool ownCopier = static_cast<bool>(source.copy);
    if (!source.copy) {
        source.copy = [from = source.path](const fs::path &to) -> std::optional<std::string> {
            if (const std::optional<FileError> error = copyFileAtomically(from, to)) {
                return describeCopyFailure(*error);
            }
            return std::nullopt;
        };
    }
    if (!source.restore) {
        source.restore = [to = source.path](const fs::path &from) -> std::optional<std::string> {
            if (const std::optional<FileError> error = copyFileAtomically(from, to)) {
                return error->message();
            }
            return std::nullopt;
        };
    }
    m_sources.push_back({std::move(source), ownCopier, false});
}

bool Backups::keeps(DataFile file) const
{
    return std::any_of(m_sources.begin(), m_sources.end(),
                       [file](const Sourced &each) { return each.source.file == file; });
}

template <typename Sources> auto &Backups::find(Sources &sources, DataFile file)
{
    for (auto &each : sources) {
        if (each.source.file == file) {
            return each;
        }
    }
    throw std::logic_error("no backups are kept of this file");
}

Backups::Sourced &Backups::sourced(DataFile file)
{
    return find(m_sources, file);
}

const BackupSource &Backups::source(DataFile file) const
{
    return find(m_sources, file).source;
}

std::vector<Backup> Backups::listOf(const BackupSource &source) const
{
    const std::string stem = source.path.stem().u8string();
    const std::string extension = source.path.extension().u8string();
    std::vector<Backup> copies;
    std::error_code error;
    for (fs::directory_iterator it(m_folder, error), end; !error && it != end;
         it.increment(error)) {
        const std::optional<BackupName> name =
            parseBackupFileName(it->path().filename().u8string(), stem, extension);
        std::error_code statError;
        if (!name || !it->is_regular_file(statError)) {
            continue;
        }
        const std::uintmax_t bytes = it->file_size(statError);
        copies.push_back(
            {source.file, it->path(), name->made, name->sequence, statError ? 0 : bytes});
    }
    std::sort(copies.begin(), copies.end(), newerFirst);
    return copies;
}

std::vector<Backup> Backups::list() const
{
    std::vector<Backup> all;
    for (const Sourced &each : m_sources) {
        std::vector<Backup> copies = listOf(each.source);
        all.insert(all.end(), copies.begin(), copies.end());
    }
    std::sort(all.begin(), all.end(), newerFirst);
    return all;
}

BackupSummary Backups::summarise(const Backup &backup) const
{
    const BackupSource &from = source(backup.file);
    return from.summarise ? from.summarise(backup.path) : BackupSummary{true, {}};
}

BackupOutcome Backups::backUpBeforeFirstSave(DataFile file)
{
    Sourced &each = sourced(file);
    if (each.savedBefore) {
        return {BackupOutcome::Status::Done, {}};
    }
    // Tried once: a copy that failed is not tried again at every save.
    each.savedBefore = true;
    return backUp(file);
}

BackupOutcome Backups::backUp(DataFile file)
{
    return backUpSparing(file, {});
}

BackupOutcome Backups::backUpSparing(DataFile file, const fs::path &spared)
{
    const Sourced &each = sourced(file);
    const BackupSource &from = each.source;
    {
        const FileReader probe(from.path);
        if (probe.missing()) {
            return {BackupOutcome::Status::NoFile, {}};
        }
    }
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (error) {
        return {BackupOutcome::Status::Failed, "the folder " + quoted(m_folder) +
                                                   " could not be made: " + systemErrorText(error) +
                                                   "."};
    }

    const std::vector<Backup> copies = listOf(from);
    if (!each.ownCopier && !copies.empty() && sameBytes(from.path, copies.front().path)) {
        return {BackupOutcome::Status::Unchanged, {}};
    }
    BackupName name{from.path.stem().u8string(), from.path.extension().u8string(),
                    secondsOf(m_clock.localMilliseconds()), 1};
    // Another copy in the same second (the Tests and Students files before one
    // action, or two actions in a row) takes the next number.
    for (const Backup &copy : copies) {
        if (copy.made == name.made) {
            name.sequence = std::max(name.sequence, copy.sequence + 1);
        }
    }
    const fs::path made = m_folder / fs::u8path(backupFileName(name));
    if (const std::optional<std::string> problem = from.copy(made)) {
        return {BackupOutcome::Status::Failed, *problem};
    }
    if (each.ownCopier && !copies.empty() && sameBytes(made, copies.front().path)) {
        fs::remove(made, error);
        return {BackupOutcome::Status::Unchanged, {}};
    }
    removeOldCopies(from, spared);
    return {BackupOutcome::Status::Made, {}};
}

void Backups::removeOldCopies(const BackupSource &source, const fs::path &spared)
{
    const std::vector<Backup> copies = listOf(source);
    std::vector<KeptCopy> kept;
    kept.reserve(copies.size());
    for (const Backup &copy : copies) {
        kept.push_back({copy.made, copy.bytes});
    }
    KeepRule rule = m_rule;
    rule.maxBytes = source.maxBytes;
    const std::vector<bool> keep = copiesToKeep(kept, rule);
    std::error_code ignored;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        if (!keep[i] && copies[i].path != spared) {
            fs::remove(copies[i].path, ignored);
        }
    }
    // A copy cut short by a killed program leaves its temporary file behind.
    std::vector<std::string> unfinished;
    for (fs::directory_iterator it(m_folder, ignored), end; !ignored && it != end;
         it.increment(ignored)) {
        if (auto copy = unfinishedCopyOf(it->path().filename().u8string(), source)) {
            unfinished.push_back(std::move(*copy));
        }
    }
    for (const std::string &copy : unfinished) {
        removeStaleTemporaries(m_folder / fs::u8path(copy));
    }
}

std::optional<std::string> Backups::restore(const Backup &backup)
{
    const BackupSource &into = sourced(backup.file).source;
    const BackupOutcome before = backUpSparing(backup.file, backup.path);
    if (before.failed()) {
        return "The " + into.label + " file as it is now could not be backed up, so it was not " +
               "replaced: " + before.problem;
    }
    return into.restore(backup.path);
}
