// Everything the screens share while the program runs: the test bank, the
// roster, the answer history, where the files live, their backups and the way
// to ask the user.
// Saving goes through here so that every failure reaches the user the same way.
#pragma once

#include "core/Backups.h"
#include "core/DataPaths.h"
#include "core/Students.h"
#include "core/TestBank.h"
#include "ui/ProgramMode.h"

#include <initializer_list>
#include <memory>
#include <utility>

class History;
class HistoryClock;
class Prompt;
class QWidget;

struct Session {
    // The clock dates the backups and what the history records; without one,
    // the computer's is used.
    Session(DataPaths dataPaths, Prompt &userPrompt);
    Session(DataPaths dataPaths, Prompt &userPrompt, HistoryClock &historyClock);
    ~Session();

    TestBank bank;
    StudentRecords records;
    DataPaths paths;
    Prompt &prompt;
    // Set from the command line before the screens are built, which ask it.
    ProgramMode mode = ProgramMode::Normal;
    // Set at start-up when the Tests file stayed where it was without being
    // used (it could not be read, or not be moved aside): no save replaces it.
    bool keepTestsFile = false;
    // Dated copies of the two files, in the backups folder of the data folder.
    Backups backups;
    // A failed backup was told and none has worked since: the next is not told.
    bool backupFailureTold = false;

    HistoryClock &clock;
    // Every answer given, beside the two files (ClassHistory.h). Opened by the
    // main screen at start-up; null before that, and nothing is recorded.
    std::unique_ptr<History> history;

    // Write a file; on failure the user is told which file and why, the data in
    // memory is kept and the previous file stays as it was. True when saved.
    // The first save of each file in a run is preceded by a backup of it. A
    // saved roster is handed to the history, which then erases the history of
    // the students deleted since.
    bool saveTests(QWidget *parent);
    bool saveStudents(QWidget *parent);

    // Before an action that wipes or removes results, students, subjects or
    // questions, once the user has confirmed it: a copy of each file as last
    // saved (of the history, as it is; none while it is not open). A failed
    // copy is told (once) and the action goes on.
    void backUpBeforeLoss(std::initializer_list<DataFile> files, QWidget *parent);

    // Puts a backup in its file's place, after a backup of the file as it is
    // now, and the bank or roster in memory becomes the restored one (a
    // restored history is matched to the roster and bank as they are). Asks
    // nothing. On failure the user is told why, and files and memory stay as
    // they were. True when restored.
    bool restoreBackup(const Backup &backup, QWidget *parent);
};
