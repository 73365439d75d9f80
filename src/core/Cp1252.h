// Converting text between UTF-8, as it is held in memory, and Windows-1252,
// the single-byte code page of the data files.
#pragma once

#include <string>
#include <string_view>

// Every byte maps to one character, so any file text survives a load and a save.
std::string cp1252ToUtf8(std::string_view bytes);

// A character that Windows-1252 cannot hold, and any invalid UTF-8, becomes "?".
std::string utf8ToCp1252(std::string_view text);
// The same, appended to out: a writer of many texts needs no string per text.
void appendUtf8AsCp1252(std::string &out, std::string_view text);
