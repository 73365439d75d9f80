// The test bank: subjects, their stored questions and test lengths, and the
// number ranges and operations from which Arithmetic questions are generated.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Thirteen levels exist everywhere: 0 is kindergarten ("K"), then 1..12.
constexpr int LevelCount = 13;
// Operations in the order of their symbols: "+", "-", "x", "/".
constexpr int OperationCount = 4;
// The range tables have 31 rows although only rows 0..12 (the levels) are used;
// the extra rows are part of the Tests file and are kept.
constexpr int RangeRowCount = 31;

constexpr int ArithmeticSubject = 0;
constexpr int SpellingSubject = 1;
// Subjects below this index are built in: they can be reverted, never renamed or deleted.
constexpr int FirstAddedSubject = 6;

constexpr int DefaultSeconds = 30;

// Operation index -> symbol; "x" is a lower-case letter.
constexpr std::array<char, OperationCount> OpSymbols = {'+', '-', 'x', '/'};

// The operation index of a symbol, or -1 when the character is not one.
int operationIndex(char symbol);

// "K" for level 0, "1".."12" otherwise.
std::string levelText(int level);

struct Subject {
    std::string name;
    bool adjacentLevels = false; // questions of the neighbouring levels are used as well
};

struct Question {
    std::string text;
    std::string answer;
    std::string wrong1;
    std::string wrong2;
    std::string wrong3;
};

// One level's questions, slot by slot. A deque rather than a vector: adding a
// question to a full level gives every level of every subject another slot,
// and a deque grows without moving the questions it already holds.
using LevelSlots = std::deque<Question>;

// [level][slot]
using LevelQuestions = std::array<LevelSlots, LevelCount>;

// One subject's question records as the Tests file holds them (slot by slot,
// level fastest, five texts each), checked when the file was read, with what
// keeps their bytes alive.
struct StoredQuestions {
    std::shared_ptr<const void> owner;
    std::string_view records;
    std::size_t slotCount = 0;
};

// One subject's questions. Loaded from the Tests file they stay in the file's
// form until something first asks for them: a large bank loads in the time it
// takes to read it, and a subject nobody opens is never decoded.
class SubjectQuestions {
public:
    SubjectQuestions() = default;
    explicit SubjectQuestions(StoredQuestions stored);

    // items()[level][slot], every subject with slots 0..questionMax. The first
    // call decodes stored questions.
    LevelQuestions &items();
    const LevelQuestions &items() const;

    // The number of slots at every level, without decoding.
    std::size_t slotCount() const;
    // Grows or shrinks every level to this many slots; new slots are empty.
    void resizeSlots(std::size_t count);

    // The records still in the file's form, so that a save can copy them as they
    // are, or nullptr once decoded. Slots past stored->slotCount, up to slotCount(),
    // are empty.
    const StoredQuestions *stored() const { return m_stored ? &*m_stored : nullptr; }

private:
    void decode() const;

    mutable LevelQuestions m_items;
    mutable std::optional<StoredQuestions> m_stored;
    std::size_t m_storedSlotCount = 0; // slotCount() while stored
};

struct SubjectLimits {
    // The questions in use at level L are items[L][0..lastQuestion[L]]; -1 means none.
    std::array<int32_t, LevelCount> lastQuestion{};
    int32_t seconds = 0;
};

// [row 0..30][operation 0..3]
using RangeTable = std::array<std::array<int32_t, OperationCount>, RangeRowCount>;

constexpr int SwitchNumbers = 0;
constexpr int SwitchBlanks = 1;

struct TestBank {
    int32_t subjectMax = -1; // number of subjects minus 1
    std::vector<Subject> subjects;
    int32_t questionMax = -1; // highest slot index of every subject's items
    std::vector<SubjectQuestions> questionBank;
    std::vector<SubjectLimits> limits;

    RangeTable arithLow1{};
    RangeTable arithHigh1{};
    RangeTable arithLow2{};
    RangeTable arithHigh2{};
    // The operation symbols asked at each level, in the order they are asked.
    std::array<std::string, LevelCount> arithOps;
    // [level][SwitchNumbers or SwitchBlanks]
    std::array<std::array<bool, 2>, LevelCount> arithSwitch{};
};

// Resizes every subject's items to slots 0..questionMax, keeping their contents,
// and sets questionMax.
void resizeQuestionSlots(TestBank &bank, int32_t questionMax);

// Appends a subject the user added: not using adjacent levels, 30 seconds, and
// one empty question at level K, so that every subject has at least one question.
void addSubject(TestBank &bank, const std::string &name);

// Whether the level can give questions: operations for Arithmetic, a stored
// question for any other subject.
bool levelHasQuestions(const TestBank &bank, int subject, int level);
