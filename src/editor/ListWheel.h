// The lists of the Tests screen store their value the moment it changes, with
// no undo; a wheel rolled over one on the way down the screen must not do that.
#pragma once

class QComboBox;

// The list takes the focus by a click or Tab only, not by the wheel; while it
// does not have the focus, a wheel over it scrolls the screen behind it and
// leaves the list as it was. With the focus, the wheel changes it as before.
void changeByWheelOnlyWhenFocused(QComboBox &list);
