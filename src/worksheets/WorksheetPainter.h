// Draws a worksheet on any paged device, from its layout, so that the PDF of
// the command line and the print preview (and so the printer) show the same pages.
#pragma once

#include <QLocale>
#include <QPageLayout>

class QPagedPaintDevice;
struct Worksheet;

// Portrait pages of the locale's paper size (Letter or A4) with margins of 12 mm.
QPageLayout worksheetPageLayout(const QLocale &locale);

// Draws every page; false when painting could not begin (a file that cannot be
// written, a printer that is gone).
bool paintWorksheet(QPagedPaintDevice &device, const Worksheet &sheet);
