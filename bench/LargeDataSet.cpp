#include "LargeDataSet.h"

#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <random>
#include <string>
#include <string_view>

namespace {

// Words of the sizes school questions are made of; a few carry a letter beyond
// ASCII, as names and borrowed words do, so the code page conversion is used.
constexpr std::array<std::string_view, 48> Words = {
    "which", "river",  "flows",   "through", "the",    "capital", "of",       "country",
    "how",   "many",   "legs",    "does",    "spider", "have",    "who",      "wrote",
    "first", "book",   "about",   "a",       "small",  "island",  "what",     "is",
    "name",  "for",    "group",   "whales",  "when",   "did",     "war",      "end",
    "in",    "colour", "mixing",  "blue",    "yellow", "gives",   "largest",  "planet",
    "our",   "solar",  "système", "café",    "naïve",  "Zoë",     "Ångström", "piano"};

constexpr std::array<std::string_view, 24> FirstNames = {
    "Ann",  "Ben",   "Chloé", "David", "Emma", "Felix", "Grace", "Hugo",
    "Iris", "Jonas", "Kira",  "Liam",  "Maya", "Noah",  "Olga",  "Paul",
    "Rosa", "Sam",   "Tara",  "Umar",  "Vera", "Will",  "Yara",  "Zoë"};

constexpr std::array<std::string_view, 16> LastNames = {
    "Adams",   "Brown", "Costa",    "Dubois", "Evans",  "Fischer", "García", "Hughes",
    "Ivanova", "Jones", "Kowalski", "Larsen", "Müller", "Nowak",   "Okafor", "Perez"};

constexpr std::array<std::string_view, 11> Topics = {
    "Art",   "Biology", "Chemistry", "Drama",   "Economics",  "French",
    "Latin", "Physics", "Reading",   "Writing", "World Music"};

constexpr std::array<std::string_view, 4> TopicPrefixes = {"", "Early ", "More ", "Advanced "};

// The engine's output is fixed by the standard; the distributions' is not, so
// draws are made from it directly and the data is the same on every system.
class Draw {
public:
    explicit Draw(std::uint32_t seed) : m_engine(seed) {}
    int between(int low, int high)
    {
        return low + static_cast<int>(m_engine() % static_cast<std::uint32_t>(high - low + 1));
    }
    template <typename T, std::size_t N> const T &from(const std::array<T, N> &items)
    {
        return items[m_engine() % N];
    }

private:
    std::mt19937 m_engine;
};

// Length counts characters, as the screens and the file (one byte each) do.
std::size_t characterCount(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

// Words until the wanted length is reached, then cut to it exactly.
std::string sentence(Draw &draw, int length)
{
    std::string text;
    std::size_t characters = 0;
    while (characters < static_cast<std::size_t>(length)) {
        if (!text.empty()) {
            text += ' ';
            ++characters;
        }
        const std::string_view word = draw.from(Words);
        text += word;
        characters += characterCount(word);
    }
    while (characters > static_cast<std::size_t>(length)) {
        // Drop the last character, with every byte of it.
        while ((static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        text.pop_back();
        --characters;
    }
    text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    return text;
}

std::string subjectName(int subject)
{
    const int added = subject - FirstAddedSubject;
    const int topics = static_cast<int>(Topics.size());
    std::string name =
        std::string(
            TopicPrefixes[static_cast<std::size_t>(added / topics) % TopicPrefixes.size()]) +
        std::string(Topics[static_cast<std::size_t>(added % topics)]);
    if (added >= topics * static_cast<int>(TopicPrefixes.size()))
        name += " " + std::to_string(added);
    return name;
}

} // namespace

TestBank makeLargeTestBank(const LargeDataSetSize &size)
{
    TestBank bank;
    buildDefaultTests(bank);
    const int subjects = std::max(size.subjects, FirstAddedSubject);
    bank.subjectMax = subjects - 1;
    bank.subjects.resize(static_cast<std::size_t>(subjects));
    for (int s = FirstAddedSubject; s < subjects; ++s)
        bank.subjects[static_cast<std::size_t>(s)] = Subject{subjectName(s), false};
    bank.questionBank.resize(static_cast<std::size_t>(subjects));
    bank.limits.resize(static_cast<std::size_t>(subjects));
    resizeQuestionSlots(bank, size.questionsPerLevel - 1);

    Draw draw(size.seed);
    for (int s = ArithmeticSubject + 1; s < subjects; ++s) {
        SubjectLimits &limits = bank.limits[static_cast<std::size_t>(s)];
        limits.seconds = 30 * draw.between(1, 4);
        for (int level = 0; level < LevelCount; ++level) {
            limits.lastQuestion[level] = size.questionsPerLevel - 1;
            for (Question &question :
                 bank.questionBank[static_cast<std::size_t>(s)].items()[level]) {
                for (std::string *field : {&question.text, &question.answer, &question.wrong1,
                                           &question.wrong2, &question.wrong3})
                    *field = sentence(draw, draw.between(size.shortestText, size.longestText));
            }
        }
    }
    return bank;
}

StudentRecords makeLargeRoster(const TestBank &bank, const LargeDataSetSize &size)
{
    Draw draw(size.seed + 1);
    StudentRecords records;
    records.showByStudent = true;
    records.currentSubject = ArithmeticSubject;
    records.currentSubjectName = bank.subjects.front().name;
    records.students.reserve(static_cast<std::size_t>(size.students));
    for (int i = 0; i < size.students; ++i) {
        Student student = newStudent(bank.subjectMax);
        student.name = std::string(draw.from(FirstNames)) + " " + std::string(draw.from(LastNames));
        student.level = static_cast<int16_t>(draw.between(0, LevelCount - 1));
        for (SubjectResults &results : student.results) {
            for (int level = 0; level < LevelCount; ++level) {
                results.last[level] = static_cast<int16_t>(draw.between(-3, 40));
                results.high[level] =
                    static_cast<int16_t>(results.last[level] + draw.between(0, 10));
            }
        }
        records.students.push_back(std::move(student));
    }
    records.students.front().current = true;
    records.currentStudentName = trimName(records.students.front().name);
    return records;
}

std::optional<FileError> writeLargeDataSet(const std::filesystem::path &dataDir,
                                           const LargeDataSetSize &size)
{
    std::error_code ec;
    std::filesystem::create_directories(dataDir, ec);
    if (ec)
        return FileError{FileError::Kind::Unwritable, dataDir.string(), ec.message(), {}};
    const DataPaths paths = DataPaths::in(dataDir);
    const TestBank bank = makeLargeTestBank(size);
    if (std::optional<FileError> error = saveTests(bank, paths.testsPath))
        return error;
    return saveStudents(makeLargeRoster(bank, size), paths.studentsPath);
}
