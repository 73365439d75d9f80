#include "core/Cp1252.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace {

// Bytes 0x80..0x9F. The five bytes the code page leaves undefined map to the
// control characters of the same number, so that they too round-trip.
constexpr std::array<char32_t, 32> HighControlRange = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char Replacement = '?';

char32_t toCodePoint(unsigned char byte)
{
    if (byte >= 0x80 && byte <= 0x9F) {
        return HighControlRange[byte - 0x80];
    }
    return byte;
}

std::size_t utf8Length(char32_t cp)
{
    return cp < 0x80 ? 1 : cp < 0x800 ? 2 : 3;
}

// Writes the character at to and returns the position after it.
char *writeUtf8(char *to, char32_t cp)
{
    if (cp < 0x80) {
        *to++ = static_cast<char>(cp);
    } else if (cp < 0x800) {
        *to++ = static_cast<char>(0xC0 | (cp >> 6));
        *to++ = static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        // Windows-1252 reaches no further than the Basic Multilingual Plane.
        *to++ = static_cast<char>(0xE0 | (cp >> 12));
        *to++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        *to++ = static_cast<char>(0x80 | (cp & 0x3F));
    }
    return to;
}

// The byte for a code point, or the replacement when the code page lacks it.
char toByte(char32_t cp)
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

// Bytes are tested eight at a time: one of 0x80 and above has its top bit set.
constexpr std::uint64_t TopBits = 0x8080808080808080ULL;

std::uint64_t eightBytesAt(std::string_view bytes, std::size_t pos)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + pos, sizeof word);
    return word;
}

std::size_t asciiRunLength(std::string_view bytes, std::size_t from)
{
    std::size_t end = from;
    while (end + 8 <= bytes.size() && (eightBytesAt(bytes, end) & TopBits) == 0) {
        end += 8;
    }
    while (end < bytes.size() && static_cast<unsigned char>(bytes[end]) < 0x80) {
        ++end;
    }
    return end - from;
}

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

// Decodes one character starting at text[pos]; returns its length in bytes, or 0
// when the bytes there are not valid UTF-8 (overlong forms and surrogates included).
std::size_t decodeUtf8(std::string_view text, std::size_t pos, char32_t &cp)
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
        if (!isContinuation(byte)) {
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

std::string cp1252ToUtf8(std::string_view bytes)
{
    // Texts are converted by the hundred thousand when a large bank loads: plain
    // ASCII, the same in both encodings, is copied whole, and any other text is
    // sized first so that it is allocated once and written in place.
    const std::size_t ascii = asciiRunLength(bytes, 0);
    if (ascii == bytes.size()) {
        return std::string(bytes);
    }
    std::size_t size = 0;
    for (std::size_t pos = 0; pos < bytes.size();) {
        const std::size_t run = asciiRunLength(bytes, pos);
        size += run;
        pos += run;
        if (pos < bytes.size()) {
            size += utf8Length(toCodePoint(static_cast<unsigned char>(bytes[pos++])));
        }
    }
    std::string out(size, '\0');
    char *to = out.data();
    for (std::size_t pos = 0; pos < bytes.size();) {
        const std::size_t run = asciiRunLength(bytes, pos);
        std::memcpy(to, bytes.data() + pos, run);
        to += run;
        pos += run;
        if (pos < bytes.size()) {
            to = writeUtf8(to, toCodePoint(static_cast<unsigned char>(bytes[pos++])));
        }
    }
    return out;
}

std::string utf8ToCp1252(std::string_view text)
{
    std::string out;
    appendUtf8AsCp1252(out, text);
    return out;
}

void appendUtf8AsCp1252(std::string &out, std::string_view text)
{
    // No character takes more bytes in the code page than in UTF-8: the room is
    // made once, written in place and cut to what was written. Runs of plain
    // ASCII, the same in both encodings, are copied whole.
    const std::size_t start = out.size();
    out.resize(start + text.size());
    char *to = out.data() + start;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t run = asciiRunLength(text, pos);
        std::memcpy(to, text.data() + pos, run);
        to += run;
        pos += run;
        if (pos == text.size()) {
            break;
        }
        char32_t cp = 0;
        const std::size_t length = decodeUtf8(text, pos, cp);
        if (length == 0) {
            // One "?" for the broken sequence: its lead byte and any continuation bytes.
            *to++ = Replacement;
            ++pos;
            while (pos < text.size() && isContinuation(static_cast<unsigned char>(text[pos]))) {
                ++pos;
            }
            continue;
        }
        *to++ = toByte(cp);
        pos += length;
    }
    out.resize(static_cast<std::size_t>(to - out.data()));
}
