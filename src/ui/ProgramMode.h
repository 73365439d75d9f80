// The two ways Tavrino runs: the teacher's copy, and the classroom mode
// (tavrino --classroom) in which children take tests while the bank and the
// roster are left to the teacher. What the classroom mode takes away from each
// screen is listed once, in ProgramMode.cpp.
#pragma once

class QWidget;

enum class ProgramMode { Normal, Classroom };

// In classroom mode, hides and disables the screen's teacher-only controls and
// makes its read-only boxes read-only; in the normal mode, does nothing.
// Screens call it once their controls are built and enabled.
void applyProgramMode(QWidget &screen, ProgramMode mode);

// True when the mode keeps this control hidden, so that a screen which shows
// and hides its own buttons (around a test) leaves it hidden.
bool hiddenInMode(const QWidget &control, ProgramMode mode);
