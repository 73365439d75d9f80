#include "ClassListFile.h"

#include "DelimitedText.h"
#include "RosterText.h"
#include "core/FileSystem.h"
#include "core/Students.h"

#include <cerrno>
#include <cstdint>

namespace {

ClassList refused(const std::string &fileName, const std::string &why)
{
    return ClassList{{}, "The file \"" + fileName + "\" " + why};
}

constexpr const char *TooLarge = "is larger than 1 MB, far larger than a list of names. Choose a "
                                 "text or CSV file that holds the class's names.";

std::string lowerAscii(std::string text)
{
    for (char &c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

std::string extensionOf(const std::string &fileName)
{
    return lowerAscii(std::filesystem::path(fileName).extension().string());
}

// The column a header row names, or -1 when the first record is not a header.
// "Name" wins over "Student", under which a school's export may list numbers.
int headerColumn(const std::vector<std::string> &record)
{
    for (const std::string heading : {"name", "student"}) {
        for (std::size_t column = 0; column < record.size(); ++column) {
            const std::string field = lowerAscii(trimName(record[column]));
            if (field == heading || field == heading + "s") {
                return static_cast<int>(column);
            }
        }
    }
    return -1;
}

// The field as one line of a text box: every line break in it becomes a space,
// and the blanks around it go.
std::string oneLine(const std::string &field)
{
    std::string line;
    line.reserve(field.size());
    for (std::size_t pos = 0; pos < field.size();) {
        const std::size_t length = lineBreakAt(field, pos);
        if (length == 0) {
            line += field[pos++];
        } else {
            line += ' ';
            pos += length;
        }
    }
    return trimName(line);
}

// The delimiter a spreadsheet names in a first line "sep=;", which is then
// passed over; else the one the first record shows.
char delimiterOf(std::string_view &text)
{
    constexpr std::string_view Hint = "sep=";
    constexpr std::size_t HintLength = Hint.size() + 1;
    if (text.size() >= HintLength && lowerAscii(std::string(text.substr(0, Hint.size()))) == Hint) {
        const char named = text[Hint.size()];
        const bool usable = named == '\t' || (named > ' ' && named < '\x7F' && named != '"');
        const std::size_t breakLength =
            text.size() == HintLength ? 0 : lineBreakAt(text, HintLength);
        if (usable && (text.size() == HintLength || breakLength > 0)) {
            text.remove_prefix(HintLength + breakLength);
            return named;
        }
    }
    return guessDelimiter(text);
}

// The names in the column a header row names, else in the first column; a
// header row is not a name, nor is a record without the column.
std::vector<std::string> namesInColumn(std::string_view text, char delimiter)
{
    DelimitedReader reader(text, delimiter);
    std::vector<std::string> fields;
    std::vector<std::string> names;
    std::size_t column = 0;
    if (reader.next(fields)) {
        const int header = headerColumn(fields);
        if (header >= 0) {
            column = static_cast<std::size_t>(header);
        } else if (std::string name = oneLine(fields.front()); !name.empty()) {
            names.push_back(std::move(name));
        }
    }
    while (reader.next(fields)) {
        if (column < fields.size()) {
            if (std::string name = oneLine(fields[column]); !name.empty()) {
                names.push_back(std::move(name));
            }
        }
    }
    return names;
}

std::vector<std::string> namesInLines(std::string_view text)
{
    std::vector<std::string> names;
    bool first = true;
    for (const std::string_view line : splitLines(text)) {
        std::string name = trimName(std::string(line));
        if (name.empty()) {
            continue;
        }
        if (first && headerColumn({name}) == 0) {
            first = false;
            continue;
        }
        first = false;
        names.push_back(std::move(name));
    }
    return names;
}

} // namespace

ClassList readClassList(std::string_view bytes, const std::string &fileName)
{
    if (bytes.size() > MaxClassListBytes) {
        return refused(fileName, TooLarge);
    }
    if (bytes.find('\0') != std::string_view::npos || bytes.substr(0, 2) == "\xFF\xFE" ||
        bytes.substr(0, 2) == "\xFE\xFF") {
        return refused(fileName, "does not hold plain text. Save the list from the spreadsheet or "
                                 "editor as CSV or as text, and choose that file.");
    }
    const std::string text = decodeRosterText(bytes);
    const std::string extension = extensionOf(fileName);
    std::vector<std::string> names;
    if (extension == ".csv") {
        std::string_view records = text;
        names = namesInColumn(records, delimiterOf(records));
    } else if (extension == ".tsv" || extension == ".tab" || text.find('\t') != std::string::npos) {
        names = namesInColumn(text, '\t');
    } else {
        names = namesInLines(text);
    }
    if (names.empty()) {
        return refused(fileName, "holds no names.");
    }
    return ClassList{std::move(names), {}};
}

ClassList readClassListFile(const std::filesystem::path &path)
{
    const std::string fileName = path.u8string();
    const auto unreadable = [&fileName](int error) {
        return refused(fileName, "could not be read: " + systemErrorText(error) + ".");
    };
    constexpr const char *NotNames = "is not a file of names.";
    NativeFile file;
    if (const int error = file.openForReading(path)) {
        return error == EISDIR ? refused(fileName, NotNames) : unreadable(error);
    }
    if (!file.isOrdinaryFile()) {
        return refused(fileName, NotNames);
    }
    std::uint64_t size = 0;
    if (const int error = file.size(size)) {
        return unreadable(error);
    }
    if (size > MaxClassListBytes) {
        return refused(fileName, TooLarge);
    }
    // One byte more than allowed shows a file that grew while it was read.
    std::string bytes(MaxClassListBytes + 1, '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        std::size_t got = 0;
        if (const int error = file.read(bytes.data() + filled, bytes.size() - filled, got)) {
            return unreadable(error);
        }
        if (got == 0) {
            break;
        }
        filled += got;
    }
    bytes.resize(filled);
    return readClassList(bytes, fileName);
}
