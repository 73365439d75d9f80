// The look every printed page shares (class report, facts report, worksheets):
// one sans-serif face at the sizes each page asks for, and the quiet greys of
// grid lines, header cells and secondary text.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include <string>

namespace PrintStyle {

// Arial where it is installed, any sans-serif face otherwise.
QFont font(double points, bool bold = false);

// The data files hold UTF-8 in memory; pages draw QStrings.
QString text(const std::string &utf8);

inline const QColor GridColour{0xC8, 0xC8, 0xC8};
inline const QColor HeaderFill{0xEC, 0xEC, 0xEC};
inline const QColor QuietText{0x55, 0x55, 0x55};

} // namespace PrintStyle
