// Which backups of one data file are kept: the newest ones, the newest of each
// of the days before them, and within a limit of bytes.
#pragma once

#include "core/LocalTime.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

struct KeepRule {
    std::size_t newest = 30; // copies kept whatever their day
    std::size_t days = 30;   // the newest copy of each of the latest days on which one was made
    // All kept copies together; past it the oldest go first. Unlimited when empty.
    std::optional<std::uint64_t> maxBytes;
    std::size_t alwaysKept = 3; // the newest copies, kept even past maxBytes
};

struct KeptCopy {
    LocalSeconds made = 0;
    std::uint64_t bytes = 0;
};

// For copies listed newest first, whether each stays.
std::vector<bool> copiesToKeep(const std::vector<KeptCopy> &newestFirst, const KeepRule &rule);
