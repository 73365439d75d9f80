// Automatic backups of the data files: dated copies in a folder of their own,
// made before the first save of each file in a run and before every action
// that wipes or removes data, kept by a rule, and restored in one step.
#pragma once

#include "core/BackupKeeping.h"
#include "core/FileError.h"
#include "core/LocalTime.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class HistoryClock;

// The files that are backed up: the two data files and the answer history.
enum class DataFile { Students, Tests, History };

// What a backup holds, in words, or why it cannot be read.
struct BackupSummary {
    bool readable = false;
    std::string text; // "27 students, 6 subjects", or the damage
};

// How one file is backed up. Copy and restore default to plain copies of the
// file; a file that must be copied while it is open (a database) brings its own.
struct BackupSource {
    DataFile file = DataFile::Students;
    std::string label;                     // "Students": the file as the teacher knows it
    std::filesystem::path path;            // the data file; its name names the copies
    std::optional<std::uint64_t> maxBytes; // all its copies together, see KeepRule
    // Writes a copy of the file to the given path, atomically; a message on failure.
    std::function<std::optional<std::string>(const std::filesystem::path &to)> copy;
    // Puts a copy in the file's place, atomically; a message on failure.
    std::function<std::optional<std::string>(const std::filesystem::path &from)> restore;
    std::function<BackupSummary(const std::filesystem::path &copy)> summarise;
};

struct Backup {
    DataFile file = DataFile::Students;
    std::filesystem::path path;
    LocalSeconds made = 0;
    int sequence = 1;
    std::uint64_t bytes = 0;
};

struct BackupOutcome {
    enum class Status {
        Made,
        Unchanged, // the file is byte for byte its newest copy
        NoFile,    // nothing to copy yet
        Done,      // the file was already backed up before its first save
        Failed,
    };
    Status status = Status::Made;
    std::string problem; // with Failed: what went wrong, naming the file

    bool failed() const { return status == Status::Failed; }
};

class Backups {
public:
    // The copies go into folder, which is made when the first one is written.
    // clock gives the local time the copies are named with.
    Backups(std::filesystem::path folder, HistoryClock &clock);

    void addSource(BackupSource source);
    // Whether copies of the file are made: the history's only while it is open.
    bool keeps(DataFile file) const;
    const std::filesystem::path &folder() const { return m_folder; }
    const BackupSource &source(DataFile file) const;

    // The rule every file's copies are kept by; a source's maxBytes is added.
    void setKeepRule(const KeepRule &rule) { m_rule = rule; }

    // A copy of the file as it is on disk now, unless it is missing or its newest
    // copy holds the same bytes; then the copies past the keeping rule are removed.
    BackupOutcome backUp(DataFile file);
    // The same, the first time it is asked for the file in this run only.
    BackupOutcome backUpBeforeFirstSave(DataFile file);

    // Every copy of every file, newest first. Other files in the folder are left out.
    std::vector<Backup> list() const;
    BackupSummary summarise(const Backup &backup) const;

    // Puts the copy in its file's place, after a copy of the file as it is now
    // has been made; when that copy fails, nothing is replaced. A message on failure.
    std::optional<std::string> restore(const Backup &backup);

private:
    struct Sourced {
        BackupSource source;
        bool ownCopier = false;   // the copy is not the file's bytes, so compare copies
        bool savedBefore = false; // backed up (or tried) before its first save
    };
    template <typename Sources> static auto &find(Sources &sources, DataFile file);
    Sourced &sourced(DataFile file);
    std::vector<Backup> listOf(const BackupSource &source) const;
    // backUp(), leaving spared in place whatever the keeping rule says.
    BackupOutcome backUpSparing(DataFile file, const std::filesystem::path &spared);
    void removeOldCopies(const BackupSource &source, const std::filesystem::path &spared);

    std::filesystem::path m_folder;
    HistoryClock &m_clock;
    KeepRule m_rule;
    std::vector<Sourced> m_sources;
};

// A plain copy of one file to another, written to a temporary file, flushed
// and renamed as the data files are. A missing or unreadable from is Unreadable,
// a failed write Unwritable with the path of to.
std::optional<FileError> copyFileAtomically(const std::filesystem::path &from,
                                            const std::filesystem::path &to);

// Whether two files hold the same bytes; false when either cannot be read.
bool sameBytes(const std::filesystem::path &a, const std::filesystem::path &b);
