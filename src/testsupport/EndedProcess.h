// A process number of this computer that no process has any longer, as a copy
// of the program that crashed leaves it in its lock and temporary file names.
#pragma once

#include <cstdint>

std::int64_t endedProcessId();
