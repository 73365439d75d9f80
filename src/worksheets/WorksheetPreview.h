// The print preview of a worksheet, from which the teacher prints it or saves
// it as a PDF. The main screen reaches it through a replaceable function, so
// that tests never open it.
#pragma once

#include <functional>

class QWidget;
struct Worksheet;

using WorksheetPreviewer = std::function<void(QWidget *parent, const Worksheet &sheet)>;

// Shows the sheet on portrait pages of the locale's paper size in a modal
// preview; the pages are drawn again whenever the page set-up changes.
void previewWorksheet(QWidget *parent, const Worksheet &sheet);
