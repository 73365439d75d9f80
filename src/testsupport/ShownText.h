// What a widget puts on the screen for its text, as opposed to the text it was
// given: a label may render markup, and a button or a frame turns "&" into a
// keyboard shortcut. Tests compare this with the texts the user typed.
#pragma once

#include <QString>

class QWidget;

// The text of a label, button or frame as the user reads it: markup rendered
// to plain text, and "&" shortcut marks resolved ("&&" shows "&", a single "&"
// shows nothing). Empty for any other widget.
QString shownText(const QWidget &widget);
