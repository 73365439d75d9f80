// What a keyboard user and a screen reader meet on a screen: the controls Tab
// visits, in order, and what is read out for a control.
#pragma once

#include <string>
#include <vector>

class QWidget;

// The object names of the controls Tab visits, from the window's focus widget
// round to it again; a Tab that leaves the focus where it was ends the list.
// The window is shown and made active first, as Qt narrows a group of option
// buttons to one Tab stop only in an active window.
std::vector<std::string> tabStops(QWidget &window);

// The name a screen reader reads for the control.
std::string spokenName(QWidget &widget);
// The description read after the name.
std::string spokenDescription(QWidget &widget);
