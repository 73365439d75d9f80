// Windows only: a system error code as the errno value the rest of the program
// speaks of (ERROR_SHARING_VIOLATION is EBUSY, ERROR_DISK_FULL is ENOSPC…).
#pragma once

// A code with no errno counterpart comes back negated, for systemErrorText().
int errorFromWindows(unsigned long code);
