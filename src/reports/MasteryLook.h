// How a fact's mastery looks on screen and on paper: a colour, and a mark that
// tells the states apart without it.
#pragma once

#include "fluency/Mastery.h"

#include <QColor>
#include <QString>

#include <array>

inline QColor masteryFill(Mastery mastery)
{
    switch (mastery) {
    case Mastery::Known:
        return {0x8F, 0xD1, 0x8F};
    case Mastery::Learning:
        return {0xF7, 0xCF, 0x6E};
    case Mastery::NotYet:
        return {0xF0, 0x8C, 0x8C};
    case Mastery::Untried:
        break;
    }
    return Qt::white;
}

// A tick, a wave and a cross; nothing for a fact never tried.
inline QString masteryMark(Mastery mastery)
{
    switch (mastery) {
    case Mastery::Known:
        return QStringLiteral("\u2713");
    case Mastery::Learning:
        return QStringLiteral("~");
    case Mastery::NotYet:
        return QStringLiteral("\u2717");
    case Mastery::Untried:
        break;
    }
    return {};
}

// The legend's order: best first.
constexpr std::array<Mastery, 4> MasteryLegend = {Mastery::Known, Mastery::Learning,
                                                  Mastery::NotYet, Mastery::Untried};
