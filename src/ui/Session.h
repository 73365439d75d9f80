// Everything the screens share while the program runs: the test bank, the
// roster, where the files live and the way to ask the user.
// Saving goes through here so that every failure reaches the user the same way.
#pragma once

#include "core/DataPaths.h"
#include "core/Students.h"
#include "core/TestBank.h"

#include <utility>

class Prompt;
class QWidget;

struct Session {
    Session(DataPaths dataPaths, Prompt &userPrompt)
        : paths(std::move(dataPaths)), prompt(userPrompt)
    {
    }

    TestBank bank;
    StudentRecords records;
    DataPaths paths;
    Prompt &prompt;
    // Set at start-up when the Tests file stayed where it was without being
    // used (it could not be read, or not be moved aside): no save replaces it.
    bool keepTestsFile = false;

    // Write a file; on failure the user is told which file and why, the data in
    // memory is kept and the previous file stays as it was. True when saved.
    bool saveTests(QWidget *parent);
    bool saveStudents(QWidget *parent);
};
