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
int OperationIndex(char symbol);

// "K" for level 0, "1".."12" otherwise.
std::string LevelText(int level);

struct Subject {
    std::string Name;
    bool AdjacentLevels = false; // questions of the neighbouring levels are used as well
};

struct Question {
    std::string Text;
    std::string Answer;
    std::string Wrong1;
    std::string Wrong2;
    std::string Wrong3;
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

    // Items()[level][slot], every subject with slots 0..QuestionMax. The first
    // call decodes stored questions.
    LevelQuestions &Items();
    const LevelQuestions &Items() const;

    // The number of slots at every level, without decoding.
    std::size_t SlotCount() const;
    // Grows or shrinks every level to this many slots; new slots are empty.
    void ResizeSlots(std::size_t count);

    // The records still in the file's form, so that a save can copy them as they
    // are, or nullptr once decoded. Slots past stored->slotCount, up to SlotCount(),
    // are empty.
    const StoredQuestions *Stored() const { return m_stored ? &*m_stored : nullptr; }

private:
    void decode() const;

    mutable LevelQuestions m_items;
    mutable std::optional<StoredQuestions> m_stored;
    std::size_t m_storedSlotCount = 0; // SlotCount() while stored
};

struct SubjectLimits {
    // The questions in use at level L are Items[L][0..LastQuestion[L]]; -1 means none.
    std::array<int32_t, LevelCount> LastQuestion{};
    int32_t Seconds = 0;
};

// [row 0..30][operation 0..3]
using RangeTable = std::array<std::array<int32_t, OperationCount>, RangeRowCount>;

constexpr int SwitchNumbers = 0;
constexpr int SwitchBlanks = 1;

struct TestBank {
    int32_t SubjectMax = -1; // number of subjects minus 1
    std::vector<Subject> Subjects;
    int32_t QuestionMax = -1; // highest slot index of every subject's Items
    std::vector<SubjectQuestions> QuestionBank;
    std::vector<SubjectLimits> Limits;

    RangeTable ArithLow1{};
    RangeTable ArithHigh1{};
    RangeTable ArithLow2{};
    RangeTable ArithHigh2{};
    // The operation symbols asked at each level, in the order they are asked.
    std::array<std::string, LevelCount> ArithOps;
    // [level][SwitchNumbers or SwitchBlanks]
    std::array<std::array<bool, 2>, LevelCount> ArithSwitch{};
};

// Resizes every subject's Items to slots 0..questionMax, keeping their contents,
// and sets QuestionMax.
void ResizeQuestionSlots(TestBank &bank, int32_t questionMax);

// Appends a subject the user added: not using adjacent levels, 30 seconds, and
// one empty question at level K, so that every subject has at least one question.
void AddSubject(TestBank &bank, const std::string &name);

// Whether the level can give questions: operations for Arithmetic, a stored
// question for any other subject.
bool LevelHasQuestions(const TestBank &bank, int subject, int level);
