#include "reports/PrintStyle.h"

namespace PrintStyle {

QFont font(double points, bool bold)
{
    QFont face(QStringLiteral("Arial"));
    face.setStyleHint(QFont::SansSerif);
    face.setPointSizeF(points);
    face.setBold(bold);
    return face;
}

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

} // namespace PrintStyle
