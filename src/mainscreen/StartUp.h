// The start-up steps that concern the data directory and the Tests file: make
// sure the directory exists and takes files, and never lose a damaged file.
#pragma once

#include "core/DataPaths.h"
#include "core/TestBank.h"

#include <filesystem>
#include <optional>
#include <string>

// Creates the data directory when it does not exist. An existing directory,
// empty or not, is kept as it is. On failure, a message for the user.
std::optional<std::string> makeDataDirectory(const std::filesystem::path &dataDir);

// Writes the empty page the help screens open first, when it is missing, and
// makes sure the directory takes new files. On failure, a message for the user.
std::optional<std::string> prepareDataDirectory(const DataPaths &paths);

// The first of "Tavrino_Tests.damaged.dat", "Tavrino_Tests.damaged.2.dat", ...
// that does not exist yet in the data directory.
std::filesystem::path freeDamagedCopyPath(const std::filesystem::path &dataDir);

// Removes what saves killed part-way left behind of the two files. Only for the
// holder of the data directory's lock, as nothing else may be saving then.
void removeUnfinishedSaves(const DataPaths &paths);

// The class's files were left in from, a data directory that cannot be written.
// Copies the Tests and Students files found there into the data directory when it
// holds neither, and returns the message that tells the user, naming both; nothing
// when the data directory already has the class's files.
std::optional<std::string> bringClassFiles(const std::filesystem::path &from,
                                           const DataPaths &paths);

// What start-up made of the Tests file.
struct TestBankLoad {
    // For the user, when the file could not be used.
    std::optional<std::string> message;
    // The file stays where it was although it could not be used (it could not be
    // read, or not be moved aside): nothing may save over it in this run.
    bool keepFile = false;
};

// Fills the bank from the Tests file, or with the defaults when there is none.
// A damaged file is moved aside under a free "damaged" name, so a later save
// cannot overwrite it; one that cannot be read at all (no permission, a disk
// error) may be whole and stays where it is. Either way the defaults are used
// and the message tells the user which file, what was wrong and what became of it.
TestBankLoad loadTestBank(TestBank &bank, const DataPaths &paths);
