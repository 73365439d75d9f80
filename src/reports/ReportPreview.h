// The print preview of the class report, from which the teacher prints it or
// saves it as a PDF. Screens reach it through a replaceable function, so that
// tests never open it.
#pragma once

#include <functional>

class QWidget;
struct ClassReport;

using ReportPreviewer = std::function<void(QWidget *parent, const ClassReport &report)>;

// Shows the report on landscape pages of the locale's paper size in a modal
// preview; the pages are drawn again whenever the page set-up changes.
void previewClassReport(QWidget *parent, const ClassReport &report);
