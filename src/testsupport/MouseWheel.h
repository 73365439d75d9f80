// The mouse wheel as the user rolls it: the event arrives from the window
// system, goes to the widget under the pointer, gives the focus to a widget
// that takes it by wheel, and passes on to the parents of a widget that ignores it.
#pragma once

class QWidget;

// Rolls the wheel by this many notches over the middle of the widget; a
// positive count rolls away from the user (up), a negative one down.
void rollWheel(QWidget &widget, int notches);
