// Text of a class list as it comes from outside: bytes in UTF-8 (with or
// without a byte-order mark) or Windows-1252 made into UTF-8, and split into lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Whether the bytes are well-formed UTF-8 (no overlong forms, no surrogates,
// nothing beyond U+10FFFF).
bool isUtf8(std::string_view bytes);

// The text in UTF-8. A byte-order mark is dropped; bytes that are not UTF-8
// are read as Windows-1252, where every byte is some character.
std::string decodeRosterText(std::string_view bytes);

// The lines of UTF-8 text. Lines end at CR LF, LF or CR, and at the Unicode
// line and paragraph separators, which a text box shows as line breaks too.
// Text after the last break is a line of its own, even when empty.
std::vector<std::string_view> splitLines(std::string_view text);

// Length of the line break that starts at pos, 0 when there is none.
std::size_t lineBreakAt(std::string_view text, std::size_t pos);
