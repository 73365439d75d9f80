// What adding a pasted class does: which lines become new students, which are
// passed over and why, and the students made from them.
#pragma once

#include "core/Students.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

// The longest name the Students screen's name box takes, in characters.
constexpr std::size_t MaxNameLength = 0xFFFF;

// A line as the name box would keep it: a character the Students file cannot
// hold becomes "?", the text is cut to MaxNameLength characters, and then the
// blanks around it go.
std::string cleanName(std::string_view line);

struct NewNames {
    std::vector<std::string> names; // the cleaned names to add, in the lines' order
    int onRoster = 0;               // names the roster already holds
    int repeats = 0;                // names an earlier line already gave
    int blankLines = 0;             // blank lines before the last name
    // The lines (counted from 1) holding a character the Students file cannot hold.
    std::vector<int> replacedLines;
};

// Sorts pasted lines against the roster it was made with. Names are the same
// when their cleaned texts are, ignoring the case of letters.
class NewNamesPlanner {
public:
    explicit NewNamesPlanner(const std::vector<Student> &roster);

    // The text's lines, one name each. Names already on the roster or repeated
    // are counted, and added only when addKnownNames is set.
    NewNames plan(std::string_view text, bool addKnownNames) const;

private:
    std::unordered_set<std::string> m_rosterKeys;
};

// What Add will do, in a sentence: "28 students will be added; 2 already on the
// roster are skipped; 1 blank line ignored".
std::string summaryOf(const NewNames &newNames, bool addKnownNames);
// Names the lines with characters the Students file cannot hold; empty when none.
std::string replacedWarningOf(const NewNames &newNames);

// Adds a student of each name at the end of the roster, made as Add Student makes
// one (level K, no scores, not current), then given the name and the level.
// When the roster holds only the nameless student a first run makes, and it has
// no scores, the first name goes to that student instead. Returns the index of
// the student who took the first name (the roster's size when names is empty).
std::size_t addNewStudents(StudentRecords &records, const std::vector<std::string> &names,
                           int16_t level, int32_t subjectMax);
