// Table-driven checks of the default question table: its shape, the rows
// that must stand exactly as they are, and the rules the data follows.
#include "core/DefaultQuestions.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace {

constexpr int FirstSubject = 1; // Spelling
constexpr int LastSubject = 5;  // Science
constexpr int LevelCount = 13;  // K, 1..12
constexpr int SpellingSubject = 1;

const char *const SubjectNames[] = {"Arithmetic", "Spelling", "Geography",
                                    "History",    "Music",    "Science"};

int RowsPerLevel(int subject)
{
    return subject == SpellingSubject ? 12 : 6;
}

std::string Str(const char *text)
{
    return text != nullptr ? std::string(text) : std::string();
}

std::string LevelName(int level)
{
    return level == 0 ? std::string("K") : std::to_string(level);
}

// "row 17 (Spelling K slot 5: "You hear with your" -> "ear")"
std::string Describe(std::size_t index, const DefaultQuestionRow &row)
{
    const std::string subject = row.subject >= 0 && row.subject <= LastSubject
                                    ? SubjectNames[row.subject]
                                    : "subject " + std::to_string(row.subject);
    return "row " + std::to_string(index) + " (" + subject + " " + LevelName(row.level) + " slot " +
           std::to_string(row.slot) + ": \"" + Str(row.text) + "\" -> \"" + Str(row.answer) + "\")";
}

struct FixedRow {
    int subject;
    int level;
    int slot;
    const char *text;
    const char *answer;
    const char *wrong1;
    const char *wrong2;
    const char *wrong3;
};

// Rows that must stand at their place letter for letter (misspellings included).
// clang-format off
const FixedRow FixedRows[] = {
    {1, 0, 0, "An animal that meows", "cat", "cet", "kat", "catt"},
    {1, 0, 6, "Not hot, but", "cool", "kool", "cole", "kol"},
    {1, 1, 0, "When you say something", "talk", "tak", "tok", "tahk"},
    {1, 2, 0, "", "surprise", "suprise", "surprice", "surpris"},
    {1, 8, 0, "", "perseverance", "perserverance", "perseverence", "perserverence"},
    {1, 12, 11, "", "mediocre", "midiocre", "mediocer", "mediocar"},
    {2, 0, 0, "Which ocean is next to Los Angeles", "Pacific", "Atlantic", "Carribean", "Indian"},
    {2, 0, 4, "How many States are in the U.S.", "50", "48", "52", "7"},
    {2, 1, 3, "What city has the most people", "New York", "Miami", "Kansas City", "Washington D.C."},
    {3, 0, 0, "How many States are in our Country", "50", "48", "52", "32"},
    {3, 0, 5, "What was Dorothy's dog's name", "Toto", "Spot", "Rover", "Fido"},
    {3, 1, 4, "Where did Plaibiob live", "France", "Germany", "United States", "England"},
    {3, 12, 5, "Who painted the Sistine Chapel", "Griogaibrioz", "Pliflap", "Van Gogh", "da Vinci"},
    {4, 0, 0, "How many instruments play in a Quartet", "4", "3", "6", "100"},
    {4, 1, 5, "Who sings Country Western", "Fidrotar", "Greikla", "Glevaigi", "Krokla"},
    {4, 12, 5, "Which key has no sharps or flats", "C", "D", "E", "F"},
    {5, 0, 0, "Who discovered electricity", "Braiti", "Grubra", "Klareisi", "Pruglu"},
    {5, 1, 1, "What do we call a group of buffalo", "Herd", "School", "Pack", "Flock"},
    {5, 12, 5, "What secretes Bile", "Liver", "Gall Bladder", "Stomach", "Lungs"},
};
// clang-format on

bool IsPlainAscii(const std::string &text)
{
    for (const char c : text) {
        const unsigned char u = static_cast<unsigned char>(c);
        if (u < 0x20 || u > 0x7E) {
            return false;
        }
    }
    return true;
}

} // namespace

// Counts per subject and level, order, slots without gaps, and the fixed rows.
TEST(DefaultQuestionsTable, LayoutAndFixedRows)
{
    ASSERT_EQ(DefaultQuestionCount, 156 + 4 * 78);
    ASSERT_EQ(DefaultQuestions.size(), static_cast<std::size_t>(468));

    // Walk the expected layout (subject, level, slot) and the table side by side.
    std::size_t index = 0;
    for (int subject = FirstSubject; subject <= LastSubject; ++subject) {
        for (int level = 0; level < LevelCount; ++level) {
            for (int slot = 0; slot < RowsPerLevel(subject); ++slot, ++index) {
                ASSERT_LT(index, DefaultQuestions.size());
                const DefaultQuestionRow &row = DefaultQuestions[index];
                EXPECT_TRUE(row.subject == subject && row.level == level && row.slot == slot)
                    << Describe(index, row) << " is out of place: expected "
                    << SubjectNames[subject] << " " << LevelName(level) << " slot " << slot;
            }
        }
    }
    EXPECT_EQ(index, DefaultQuestions.size());

    // Count rows per subject and level independently of their order.
    std::map<std::pair<int, int>, int> counts;
    for (const DefaultQuestionRow &row : DefaultQuestions) {
        ++counts[{row.subject, row.level}];
    }
    for (int subject = FirstSubject; subject <= LastSubject; ++subject) {
        for (int level = 0; level < LevelCount; ++level) {
            const int count = counts[std::make_pair(subject, level)];
            EXPECT_EQ(count, RowsPerLevel(subject))
                << SubjectNames[subject] << " level " << LevelName(level);
        }
    }

    // Every fixed row sits at its subject, level and slot, letter for letter.
    for (const FixedRow &fixed : FixedRows) {
        const DefaultQuestionRow *found = nullptr;
        std::size_t foundIndex = 0;
        for (std::size_t i = 0; i < DefaultQuestions.size(); ++i) {
            const DefaultQuestionRow &row = DefaultQuestions[i];
            if (row.subject == fixed.subject && row.level == fixed.level &&
                row.slot == fixed.slot) {
                found = &row;
                foundIndex = i;
                break;
            }
        }
        const std::string where = std::string("fixed row ") + SubjectNames[fixed.subject] + " " +
                                  LevelName(fixed.level) + " slot " + std::to_string(fixed.slot) +
                                  " \"" + fixed.answer + "\"";
        ASSERT_NE(found, nullptr) << where << " is missing";
        const std::string row = Describe(foundIndex, *found);
        EXPECT_EQ(Str(found->text), fixed.text) << where << ": Text differs in " << row;
        EXPECT_EQ(Str(found->answer), fixed.answer) << where << ": Answer differs in " << row;
        EXPECT_EQ(Str(found->wrong1), fixed.wrong1) << where << ": Wrong1 differs in " << row;
        EXPECT_EQ(Str(found->wrong2), fixed.wrong2) << where << ": Wrong2 differs in " << row;
        EXPECT_EQ(Str(found->wrong3), fixed.wrong3) << where << ": Wrong3 differs in " << row;
    }
}

// Text rules, four distinct choices, no repeated question, plain ASCII.
TEST(DefaultQuestionsTable, ContentRules)
{
    // Question text (or, for Spelling 2..12, the answer) seen per subject and level.
    std::map<std::pair<int, int>, std::set<std::string>> seen;

    for (std::size_t i = 0; i < DefaultQuestions.size(); ++i) {
        const DefaultQuestionRow &row = DefaultQuestions[i];
        const std::string name = Describe(i, row);

        const char *const fields[] = {row.text, row.answer, row.wrong1, row.wrong2, row.wrong3};
        const char *const fieldNames[] = {"Text", "Answer", "Wrong1", "Wrong2", "Wrong3"};
        for (int f = 0; f < 5; ++f) {
            EXPECT_NE(fields[f], nullptr) << name << ": " << fieldNames[f] << " is null";
            const std::string value = Str(fields[f]);
            EXPECT_TRUE(IsPlainAscii(value))
                << name << ": " << fieldNames[f] << " is not plain ASCII: \"" << value << "\"";
            if (!value.empty()) {
                EXPECT_TRUE(value.front() != ' ' && value.back() != ' ')
                    << name << ": " << fieldNames[f] << " has a leading or trailing space";
            }
        }

        const std::string text = Str(row.text);
        EXPECT_TRUE(text.empty() || text.back() != '?') << name << ": Text ends with \"?\"";

        const bool spellingWithoutClue = row.subject == SpellingSubject && row.level >= 2;
        if (spellingWithoutClue) {
            EXPECT_TRUE(text.empty()) << name << ": Spelling levels 2..12 must have an empty Text";
        } else {
            EXPECT_FALSE(text.empty()) << name << ": Text is empty";
        }

        const std::string choices[] = {Str(row.answer), Str(row.wrong1), Str(row.wrong2),
                                       Str(row.wrong3)};
        for (int a = 0; a < 4; ++a) {
            EXPECT_FALSE(choices[a].empty()) << name << ": " << fieldNames[a + 1] << " is empty";
            for (int b = a + 1; b < 4; ++b) {
                EXPECT_NE(choices[a], choices[b])
                    << name << ": " << fieldNames[a + 1] << " and " << fieldNames[b + 1]
                    << " are the same, \"" << choices[a] << "\"";
            }
        }

        const std::string key = spellingWithoutClue ? choices[0] : text;
        const bool inserted = seen[{row.subject, row.level}].insert(key).second;
        EXPECT_TRUE(inserted) << name << ": " << (spellingWithoutClue ? "word" : "question text")
                              << " repeated within its subject and level";
    }
}
