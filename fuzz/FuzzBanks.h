// The banks and rosters the fuzzers start from and check against: the defaults
// and a bank grown by added subjects and question slots.
#pragma once

#include "core/FileError.h"
#include "core/Students.h"
#include "core/TestBank.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

TestBank defaultBank();
TestBank grownBank();
StudentRecords roster(int32_t subjectMax);

// The bytes as a file named name in a directory of this process's own, so that
// the loaders can also read them the way they read a file from the disk.
std::filesystem::path onDisk(std::string_view bytes, const char *name);

// Stops the run with a report when a property of the loaders does not hold;
// libFuzzer then keeps the input that did it.
inline void require(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "property broken: %s\n", what);
        std::abort();
    }
}

// The same bytes read from memory and from the disk must give the same outcome.
inline void requireSameOutcome(const LoadResult &fromMemory, const LoadResult &fromDisk)
{
    require(fromMemory.status == fromDisk.status, "memory and disk give the same status");
    if (fromMemory.error) {
        require(fromDisk.error && fromMemory.error->offset == fromDisk.error->offset &&
                    fromMemory.error->cause == fromDisk.error->cause,
                "memory and disk report the same damage");
    }
}
