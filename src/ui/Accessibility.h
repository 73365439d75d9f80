// Keyboard and screen-reader helpers the screens share: a Tab order set in one
// call, and value labels that a screen reader reads together with their caption.
#pragma once

#include <QList>
#include <QString>

#include <vector>

class QAbstractButton;
class QLabel;
class QWidget;

// Tab visits the widgets in this order, Shift+Tab in the reverse one. Widgets
// without keyboard focus in the list are skipped.
void setTabChain(const std::vector<QWidget *> &widgets);

// Tab stops at the checked one of these exclusive option buttons, wherever the
// check was set from, rather than at the button that last had the focus.
void tabToCheckedButton(const QList<QAbstractButton *> &buttons);
// Brings the Tab stop up to date after buttons were enabled or disabled: while
// the checked button is disabled, or none is checked, Tab stops at each button.
void updateTabStop(const QList<QAbstractButton *> &buttons);

// A label that shows only a value, with its caption elsewhere on the screen
// ("Right" over "3"). A screen reader reads it as "Right: 3", and hears of every
// new value, because the name is made from the label's text each time it is asked.
void nameValueLabel(QLabel &label, const QString &caption);
