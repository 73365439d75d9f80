#include "NewNames.h"

#include "RosterText.h"
#include "core/Cp1252.h"

#include <algorithm>

namespace {

// The box counts its length in UTF-16 units and cuts a paste to its room
// before it replaces any character: a character beyond the Basic Multilingual
// Plane takes two units, and one cut in half leaves one unit, which becomes "?".
std::string cutToBoxLength(std::string_view line, bool &cutInHalf)
{
    std::size_t units = 0;
    std::size_t pos = 0;
    while (pos < line.size() && units < MaxNameLength) {
        const auto lead = static_cast<unsigned char>(line[pos]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const std::size_t width = length == 4 ? 2 : 1;
        if (units + width > MaxNameLength) {
            cutInHalf = true;
            return std::string(line.substr(0, pos)) + "?";
        }
        units += width;
        pos += length;
    }
    return std::string(line.substr(0, pos));
}

// The cleaned name in Windows-1252, as the Students file keeps it; replaced
// tells whether a character of it could not be kept.
std::string fileBytesOf(std::string_view line, bool &replaced)
{
    bool cutInHalf = false;
    const std::string cut = cutToBoxLength(line, cutInHalf);
    const std::string bytes = utf8ToCp1252(cut);
    replaced = cutInHalf || cp1252ToUtf8(bytes) != cut;
    return trimName(bytes);
}

// Letters of Windows-1252 in lower case, so that names compare ignoring case.
std::string keyOf(std::string bytes)
{
    for (char &c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7)) {
            c = static_cast<char>(byte + 0x20);
        } else if (byte == 0x8A || byte == 0x8C || byte == 0x8E) { // Š Œ Ž
            c = static_cast<char>(byte + 0x10);
        } else if (byte == 0x9F) { // Ÿ
            c = static_cast<char>(0xFF);
        }
    }
    return bytes;
}

std::string counted(int count, const char *one, const char *many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

bool hasScores(const Student &student)
{
    const auto scored = [](const SubjectResults &results) {
        const auto nonZero = [](int16_t score) { return score != 0; };
        return std::any_of(results.last.begin(), results.last.end(), nonZero) ||
               std::any_of(results.high.begin(), results.high.end(), nonZero);
    };
    return std::any_of(student.results.begin(), student.results.end(), scored) ||
           std::any_of(student.extraResults.begin(), student.extraResults.end(), scored);
}

} // namespace

std::string cleanName(std::string_view line)
{
    bool replaced = false;
    return cp1252ToUtf8(fileBytesOf(line, replaced));
}

NewNamesPlanner::NewNamesPlanner(const std::vector<Student> &roster)
{
    for (const Student &student : roster) {
        m_rosterKeys.insert(keyOf(trimName(utf8ToCp1252(student.name))));
    }
}

NewNames NewNamesPlanner::plan(std::string_view text, bool addKnownNames) const
{
    NewNames result;
    std::unordered_set<std::string> seen;
    int blanksSinceLastName = 0;
    int lineNumber = 0;
    for (const std::string_view line : splitLines(text)) {
        ++lineNumber;
        bool replaced = false;
        std::string bytes = fileBytesOf(line, replaced);
        if (bytes.empty()) {
            ++blanksSinceLastName;
            continue;
        }
        result.blankLines += blanksSinceLastName;
        blanksSinceLastName = 0;
        if (replaced) {
            result.replacedLines.push_back(lineNumber);
        }
        std::string key = keyOf(bytes);
        bool known = false;
        if (m_rosterKeys.count(key) > 0) {
            ++result.onRoster;
            known = true;
        } else if (!seen.insert(std::move(key)).second) {
            ++result.repeats;
            known = true;
        }
        if (!known || addKnownNames) {
            result.names.push_back(cp1252ToUtf8(bytes));
        }
    }
    return result;
}

std::string summaryOf(const NewNames &newNames, bool addKnownNames)
{
    const int added = static_cast<int>(newNames.names.size());
    std::string text =
        added == 0 ? std::string("No students") : counted(added, "student", "students");
    text += " will be added";
    if (addKnownNames && (newNames.onRoster > 0 || newNames.repeats > 0)) {
        text += ", including ";
        if (newNames.onRoster > 0) {
            text += std::to_string(newNames.onRoster) + " already on the roster";
        }
        if (newNames.onRoster > 0 && newNames.repeats > 0) {
            text += " and ";
        }
        if (newNames.repeats > 0) {
            text += counted(newNames.repeats, "repeat", "repeats") + " in the list";
        }
    } else if (!addKnownNames) {
        if (newNames.onRoster > 0) {
            text += "; " + std::to_string(newNames.onRoster) + " already on the roster " +
                    (newNames.onRoster == 1 ? "is" : "are") + " skipped";
        }
        if (newNames.repeats > 0) {
            text += "; " + counted(newNames.repeats, "repeat", "repeats") + " in the list " +
                    (newNames.repeats == 1 ? "is" : "are") + " skipped";
        }
    }
    if (newNames.blankLines > 0) {
        text += "; " + counted(newNames.blankLines, "blank line", "blank lines") + " ignored";
    }
    return text;
}

std::string replacedWarningOf(const NewNames &newNames)
{
    const std::vector<int> &lines = newNames.replacedLines;
    if (lines.empty()) {
        return {};
    }
    if (lines.size() == 1) {
        return "Line " + std::to_string(lines.front()) +
               " has a character the Students file cannot hold; it becomes \"?\".";
    }
    constexpr std::size_t Listed = 5;
    const std::size_t shown = lines.size() > Listed ? Listed : lines.size() - 1;
    std::string text = "Lines ";
    for (std::size_t i = 0; i < shown; ++i) {
        text += (i > 0 ? ", " : "") + std::to_string(lines[i]);
    }
    text += lines.size() > Listed ? " and " + std::to_string(lines.size() - Listed) + " more"
                                  : " and " + std::to_string(lines.back());
    return text + " have characters the Students file cannot hold; each becomes \"?\".";
}

std::size_t addNewStudents(StudentRecords &records, const std::vector<std::string> &names,
                           int16_t level, int32_t subjectMax)
{
    std::vector<Student> &students = records.students;
    std::size_t first = students.size();
    auto name = names.begin();
    if (name != names.end() && students.size() == 1 && trimName(students.front().name).empty() &&
        !hasScores(students.front())) {
        students.front().name = *name++;
        students.front().level = level;
        first = 0;
    }
    students.reserve(students.size() + static_cast<std::size_t>(names.end() - name));
    for (; name != names.end(); ++name) {
        Student &student = students.emplace_back(newStudent(subjectMax));
        student.name = *name;
        student.level = level;
    }
    return first;
}
