#include "core/Cp1252.h"

#include <array>
#include <cstdint>

namespace {

// Bytes 0x80..0x9F. The five bytes the code page leaves undefined map to the
// control characters of the same number, so that they too round-trip.
constexpr std::array<char32_t, 32> HighControlRange = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char Replacement = '?';

char32_t ToCodePoint(unsigned char byte)
{
    if (byte >= 0x80 && byte <= 0x9F) {
        return HighControlRange[byte - 0x80];
    }
    return byte;
}

void AppendUtf8(std::string &out, char32_t cp)
{
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        // Windows-1252 reaches no further than the Basic Multilingual Plane.
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// The byte for a code point, or the replacement when the code page lacks it.
char ToByte(char32_t cp)
{
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<char>(cp);
    }
    for (std::size_t i = 0; i < HighControlRange.size(); ++i) {
        if (HighControlRange[i] == cp) {
            return static_cast<char>(0x80 + i);
        }
    }
    return Replacement;
}

bool IsContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Decodes one character starting at text[pos]; returns its length in bytes, or 0
// when the bytes there are not valid UTF-8 (overlong forms and surrogates included).
std::size_t DecodeUtf8(std::string_view text, std::size_t pos, char32_t &cp)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    std::size_t length = 0;
    char32_t min = 0;
    if (lead < 0x80) {
        cp = lead;
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        cp = lead & 0x1F;
        min = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        cp = lead & 0x0F;
        min = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        cp = lead & 0x07;
        min = 0x10000;
    } else {
        return 0;
    }
    if (text.size() - pos < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[pos + i]);
        if (!IsContinuation(byte)) {
            return 0;
        }
        cp = (cp << 6) | (byte & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        return 0;
    }
    return length;
}

} // namespace

std::string Cp1252ToUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size());
    for (const char byte : bytes) {
        AppendUtf8(out, ToCodePoint(static_cast<unsigned char>(byte)));
    }
    return out;
}

std::string Utf8ToCp1252(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        char32_t cp = 0;
        const std::size_t length = DecodeUtf8(text, pos, cp);
        if (length == 0) {
            // One "?" for the broken sequence: its lead byte and any continuation bytes.
            out += Replacement;
            ++pos;
            while (pos < text.size() && IsContinuation(static_cast<unsigned char>(text[pos]))) {
                ++pos;
            }
            continue;
        }
        out += ToByte(cp);
        pos += length;
    }
    return out;
}
