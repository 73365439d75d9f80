// The names of backup copies: the data file's name with the local date and time
// the copy was made, so that a teacher can find one by hand as well.
#pragma once

#include "core/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

struct BackupName {
    std::string stem;      // "Tavrino_Students"
    std::string extension; // ".dat"
    LocalSeconds made = 0;
    // Copies made within the same second are told apart by a number from the
    // second one on: "... 10-15-03 (2).dat".
    int sequence = 1;
};

// "Tavrino_Students 2026-11-24 10-15-03.dat"
std::string backupFileName(const BackupName &name);

// The parts of a name backupFileName made with this stem and extension, or
// nothing for any other name (the temporary file of a copy being written, say).
std::optional<BackupName> parseBackupFileName(std::string_view fileName, std::string_view stem,
                                              std::string_view extension);
