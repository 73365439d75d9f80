// The jobs the command line runs without windows. Each reads the data folder
// and never writes there; adding a job is one entry in jobs() and its function.
#pragma once

#include <QHash>
#include <QString>

#include <filesystem>
#include <ostream>
#include <vector>

struct JobContext {
    std::filesystem::path dataDir;
    QString value;                         // what was given to the job's option
    const QHash<QString, QString> &values; // every option given, a switch with an empty value
    std::ostream &out;                     // standard output, for "-"
    std::ostream &err;                     // for the one line that says what failed
};

struct Job {
    QString option;      // "export-csv"
    QString valueName;   // "file"
    QString description; // one line of --help
    int (*run)(const JobContext &context);
};

const std::vector<Job> &jobs();
