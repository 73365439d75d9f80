// The texts of the three help pages: HTML in the Verdana face, built from
// fragments in reading order.
#pragma once

#include <QString>

// General help, shown from the main screen. dataDir is where this installation
// keeps its files; besideProgram says whether that is the "data" directory
// beneath the program (a portable copy) or the user's own data directory.
QString mainHelpPage(const QString &dataDir, bool besideProgram);

// Help for the Students screen.
QString studentsHelpPage();

// Help for the Tests screen.
QString testsHelpPage();
