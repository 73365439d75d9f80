// The texts of the three help pages: HTML in the Verdana face, built from
// fragments in reading order.
#pragma once

#include "ui/ProgramMode.h"

#include <QString>

// General help, shown from the main screen. dataDir is where this installation
// keeps its files; besideProgram says whether that is the "data" directory
// beneath the program (a portable copy) or the user's own data directory.
// In classroom mode, the pages add where the teacher's tools they describe went.
QString mainHelpPage(const QString &dataDir, bool besideProgram,
                     ProgramMode mode = ProgramMode::Normal);

// Help for the Students screen.
QString studentsHelpPage(ProgramMode mode = ProgramMode::Normal);

// Help for the Tests screen.
QString testsHelpPage();
