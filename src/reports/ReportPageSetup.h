// The pages the class report is printed on: landscape, so that thirteen levels
// sit beside the names, in the paper size of the reader's country.
#pragma once

#include <QLocale>
#include <QPageLayout>
#include <QPageSize>

// Letter in the countries that use it (the United States, Canada, Mexico and a
// few more in the Americas, and the Philippines), A4 everywhere else.
QPageSize::PageSizeId localePaperSize(const QLocale &locale);

// Landscape pages of that size with margins of 10 mm.
QPageLayout reportPageLayout(const QLocale &locale);
