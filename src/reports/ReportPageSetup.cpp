#include "reports/ReportPageSetup.h"

#include <QMarginsF>

#include <algorithm>
#include <array>

namespace {

constexpr double MarginMillimetres = 10;

constexpr std::array<QLocale::Territory, 11> LetterTerritories = {
    QLocale::UnitedStates, QLocale::Canada,     QLocale::Mexico,    QLocale::Philippines,
    QLocale::Chile,        QLocale::Colombia,   QLocale::Venezuela, QLocale::CostaRica,
    QLocale::Guatemala,    QLocale::PuertoRico, QLocale::Panama,
};

} // namespace

QPageSize::PageSizeId localePaperSize(const QLocale &locale)
{
    const bool letter = locale.measurementSystem() == QLocale::ImperialUSSystem ||
                        std::find(LetterTerritories.begin(), LetterTerritories.end(),
                                  locale.territory()) != LetterTerritories.end();
    return letter ? QPageSize::Letter : QPageSize::A4;
}

QPageLayout reportPageLayout(const QLocale &locale)
{
    const QMarginsF margins(MarginMillimetres, MarginMillimetres, MarginMillimetres,
                            MarginMillimetres);
    return QPageLayout(QPageSize(localePaperSize(locale)), QPageLayout::Landscape, margins,
                       QPageLayout::Millimeter);
}
