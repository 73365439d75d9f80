// The answer history among the backed-up files: copied while it is open with
// SQLite's own backup, put back into the open history on a restore, and listed
// by the number of answers a copy holds.
#pragma once

#include "core/Backups.h"

#include <cstdint>
#include <filesystem>

class History;

// The most all copies of the history may take together (the three newest are
// kept even past it).
constexpr std::uint64_t HistoryBackupBytes = 1'000'000'000;

// Adds the open history of dataDir to backups. history must outlive backups'
// use of it; a history that is off is not added, as it could not be copied.
void addHistorySource(Backups &backups, History &history, const std::filesystem::path &dataDir,
                      std::uint64_t maxBytes = HistoryBackupBytes);

// "1,234 answers", or why the copy is not a history this version reads. Reads
// the copy alone and writes nothing beside it.
BackupSummary summariseHistoryCopy(const std::filesystem::path &copy);
