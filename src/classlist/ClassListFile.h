// Reading a class list from a file a teacher picks: a list of names one per
// line, or a spreadsheet saved as CSV. Any bytes give names or a message.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Larger files are refused unread: a class list is a few kilobytes, and a file
// this size is not one.
constexpr std::size_t MaxClassListBytes = 1024 * 1024;

struct ClassList {
    // The names in the file's order, in UTF-8, without blanks around them and
    // never blank or holding a line break (a break inside a quoted field
    // becomes a space), so that each fills one line of a text box.
    std::vector<std::string> names;
    // Empty when names were read; otherwise why not, for the user.
    std::string problem;
};

// Reads the bytes of a file called fileName, whose extension chooses the form:
//  - ".csv" is delimited text whose delimiter (comma, semicolon or tab) the
//    first record shows; ".tsv" and ".tab" are tab-delimited; any other file is
//    tab-delimited when it holds a tab (a spreadsheet saved as text), else one
//    name a line. Commas in such a file are part of the names ("Smith, Ann").
//  - When the first record has a field "Name" or "Student" (or the plural, in
//    any case), it is a header: the names come from that column ("Name" before
//    "Student") and the header row is not a name. Otherwise the names come
//    from the first column, from the first record on.
//  - The text is UTF-8, with or without a byte-order mark, or else Windows-1252.
// Refused with a message: more than MaxClassListBytes, a file with zero bytes
// in it (a spreadsheet's own format, or UTF-16 text), and a file without names.
ClassList readClassList(std::string_view bytes, const std::string &fileName);

// The same for the file at path, which is read only when it is an ordinary
// file of at most MaxClassListBytes; a file that cannot be read gives a message.
ClassList readClassListFile(const std::filesystem::path &path);
