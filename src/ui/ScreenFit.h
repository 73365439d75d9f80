// Keeps a screen whole on a small display: its content sits in a scroll area
// that shows scroll bars only when the display cannot hold all of it, and the
// window is sized to its content within the display.
#pragma once

class QDialog;
class QScrollArea;
class QSize;
class QWidget;

// Puts the content into a frameless scroll area that fills the dialog. The
// scroll area itself is no Tab stop; the controls inside it are.
QScrollArea *scrollWhenTooSmall(QDialog &dialog, QWidget *content);

// The size the window's content can take on the display it is shown on,
// leaving room for the title bar and borders the desktop adds.
QSize roomOnScreen(const QWidget &window);

// The dialog's size when its scroll area shows the whole content.
QSize wholeContentSize(const QDialog &dialog, const QScrollArea &scrollArea);

// Gives the window the wanted size, or as much of it as the room holds (with
// space for a scroll bar beside a side that has to scroll), and centres it on
// its display.
void fitInto(QWidget &window, const QSize &wanted, const QSize &room);
