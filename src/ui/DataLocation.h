// Where Tavrino keeps its data files: in "data" beside the program when the
// program may write there (a portable copy), otherwise in the user's own
// application data directory (an installed copy).
#pragma once

#include <QString>

#include <filesystem>

// The directory named "data" beneath the program's own directory.
QString portableDataDir();

// False in a build for a system-wide install (the Debian package): the program
// then lives in a system folder and never keeps data beside itself, not even
// when run by an administrator who may write there.
bool mayKeepDataBesideProgram();

// The data directory for a program living in programDir: its "data" directory
// when that directory (or, while it does not exist yet, programDir) accepts a
// new file, otherwise "data" under userDataDir. In the second case userDataDir
// is created, so that creating "data" itself is a single step; "data" is never
// created here.
QString chooseDataDir(const QString &programDir, const QString &userDataDir);

// The data directory of this run of the program, chosen as above with the
// per-user application data location as the alternative (the only choice when
// the data may not be kept beside the program).
std::filesystem::path dataDirForThisProgram();

// The "data" directory beneath programDir when it holds a class's files (the
// Tests or the Students file) although chosenDataDir is used instead, because
// it cannot be written; otherwise an empty text.
QString classFilesLeftBehind(const QString &programDir, const QString &chosenDataDir);
// The same for this run of the program; always empty when the data may not be
// kept beside the program.
std::filesystem::path classFilesLeftBehind(const std::filesystem::path &chosenDataDir);

// True when a new file can be created in dir. Tried with a real file, removed
// again at once: permission bits alone do not tell (read-only mounts, ACLs).
bool canCreateFilesIn(const QString &dir);
