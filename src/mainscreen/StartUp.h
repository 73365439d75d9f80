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

// Fills the bank from the Tests file, or with the defaults when there is none.
// A file that cannot be read is moved aside under a free "damaged" name, so a
// later save cannot overwrite it, and the defaults are used; the returned
// message tells the user which file, what was wrong and where the copy is.
std::optional<std::string> loadTestBank(TestBank &bank, const DataPaths &paths);
