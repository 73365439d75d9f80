// What the command line asks for: the windows (on the data folder it names, if
// any), one job run without them, the help or the version; or a usage error.
// The options are declared in CommandLine.cpp and the jobs in Jobs.cpp, one line
// each.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>
#include <ostream>

struct Job;

// Exit statuses of the program run from the command line.
constexpr int ExitOk = 0;
constexpr int ExitFailed = 1; // a data file could not be read, or the output not written
constexpr int ExitUsage = 2;  // the command line itself is wrong

struct Invocation {
    enum class Action { Windows, Job, Help, Version, UsageError };
    Action action = Action::Windows;
    std::optional<std::filesystem::path> dataDir; // --data-dir, made absolute
    bool readAloud = false;                       // --read-aloud: the windows start with it on
    bool classroom = false;                       // --classroom: the windows for children
    const Job *job = nullptr;
    QString jobValue;               // the value given to the job's option
    QHash<QString, QString> values; // every option given, by name; a switch has an empty value
    QString text;                   // the help text, or what is wrong with the command line
};

// Reads the arguments (the program's name first, as QCoreApplication gives them).
Invocation readCommandLine(const QStringList &arguments);

// True when the arguments ask for no windows: a job, help, the version or a
// mistake to report. Decided before the application object exists, which must
// know whether to use a display.
bool runsWithoutWindows(const QStringList &arguments);

// Carries out everything but Windows, writing to out and err; returns the exit
// status. A job without --data-dir reads the folder the windows would use.
int runWithoutWindows(const Invocation &invocation, std::ostream &out, std::ostream &err);
