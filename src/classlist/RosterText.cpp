#include "RosterText.h"

#include "core/Cp1252.h"

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
// U+2028 LINE SEPARATOR and U+2029 PARAGRAPH SEPARATOR.
constexpr std::string_view LineSeparator = "\xE2\x80\xA8";
constexpr std::string_view ParagraphSeparator = "\xE2\x80\xA9";

bool continuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

} // namespace

bool isUtf8(std::string_view bytes)
{
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        std::size_t length = 0;
        // The second byte's range rules out overlong forms, surrogates and
        // code points past U+10FFFF.
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        if (bytes.size() - i < length) {
            return false;
        }
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        if (second < low || second > high) {
            return false;
        }
        for (std::size_t k = 2; k < length; ++k) {
            if (!continuation(static_cast<unsigned char>(bytes[i + k]))) {
                return false;
            }
        }
        i += length;
    }
    return true;
}

std::string decodeRosterText(std::string_view bytes)
{
    if (bytes.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        bytes.remove_prefix(ByteOrderMark.size());
    }
    return isUtf8(bytes) ? std::string(bytes) : cp1252ToUtf8(bytes);
}

std::size_t lineBreakAt(std::string_view text, std::size_t pos)
{
    switch (text[pos]) {
    case '\n':
        return 1;
    case '\r':
        return pos + 1 < text.size() && text[pos + 1] == '\n' ? 2 : 1;
    case '\xE2': {
        const std::string_view three = text.substr(pos, 3);
        return three == LineSeparator || three == ParagraphSeparator ? 3 : 0;
    }
    default:
        return 0;
    }
}

std::vector<std::string_view> splitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t length = lineBreakAt(text, pos);
        if (length == 0) {
            ++pos;
            continue;
        }
        lines.push_back(text.substr(start, pos - start));
        pos += length;
        start = pos;
    }
    lines.push_back(text.substr(start));
    return lines;
}
