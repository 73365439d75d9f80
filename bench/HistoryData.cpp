#include "HistoryData.h"

#include "core/History.h"
#include "core/HistoryClock.h"
#include "core/HistorySchema.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 40> FirstNames = {
    "Ann",  "Ben",  "Chloé", "David", "Emma",  "Felix", "Grace", "Hugo", "Iris", "Jonas",
    "Kira", "Liam", "Maya",  "Noah",  "Olga",  "Paul",  "Rosa",  "Sam",  "Tara", "Umar",
    "Vera", "Will", "Yara",  "Zoë",   "Aiden", "Bea",   "Cyrus", "Dina", "Eli",  "Fay",
    "Gus",  "Hana", "Ivo",   "Jade",  "Kofi",  "Lena",  "Milo",  "Nina", "Omar", "Pia"};

constexpr std::array<std::string_view, 25> LastNames = {
    "Adams", "Brown",    "Costa",  "Dubois", "Evans", "Fischer", "García", "Hughes", "Ivanova",
    "Jones", "Kowalski", "Larsen", "Müller", "Nowak", "Okafor",  "Perez",  "Quinn",  "Rossi",
    "Sato",  "Tanaka",   "Ulloa",  "Varga",  "Weber", "Young",   "Zhou"};

constexpr std::array<std::string_view, 6> BuiltInSubjects = {"Arithmetic", "Spelling", "Geography",
                                                             "History",    "Music",    "Science"};
constexpr int SubjectCount = 50;
constexpr int QuestionsPerLevel = 1000;
constexpr int ChoiceSubjectsPerStudent = 4;
constexpr int TestSeconds = 30;
constexpr int StudentsPerCommit = 20;

// Syllables of the generated texts; a few carry letters beyond ASCII.
constexpr std::array<std::string_view, 32> Syllables = {
    "ka", "lo", "mi", "ne", "ru", "ta", "ve", "so", "pa", "di", "gu", "fe", "ho", "ji", "be", "ze",
    "ri", "na", "tu", "mo", "sé", "lü", "ça", "ør", "an", "el", "is", "ob", "ur", "ex", "th", "qu"};

// The engine's output is fixed by the standard, the distributions' is not, so
// draws come from the engine directly and the history is the same everywhere.
class Draw {
public:
    explicit Draw(std::uint32_t seed) : m_engine(seed) {}
    int between(int low, int high)
    {
        return low + static_cast<int>(m_engine() % static_cast<std::uint32_t>(high - low + 1));
    }
    bool chance(int percent) { return between(1, 100) <= percent; }

private:
    std::mt19937 m_engine;
};

// A text of about shortest to longest bytes, the same for the same key. Texts
// are made for every multiple-choice answer, so from a generator far cheaper to
// start than the engine above (SplitMix64).
std::string generatedText(std::uint64_t key, int shortest, int longest)
{
    const auto next = [&key] {
        std::uint64_t z = (key += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    };
    const auto length = std::size_t(shortest) + next() % std::size_t(longest - shortest + 1);
    std::string text;
    while (text.size() < length) {
        if (!text.empty())
            text += ' ';
        for (auto syllables = 1 + next() % 3; syllables > 0; --syllables)
            text += Syllables[next() % Syllables.size()];
    }
    return text;
}

// The question a subject's bank holds at a level and index, then its right
// answer and its three wrong ones: the same texts whenever it is asked.
std::array<std::string, 5> bankQuestion(int subject, int level, int index)
{
    const auto key = static_cast<std::uint64_t>((subject * 13 + level) * QuestionsPerLevel + index);
    std::array<std::string, 5> texts;
    texts[0] = generatedText(key * 5, 20, 60);
    for (std::uint64_t i = 1; i < 5; ++i)
        texts[i] = generatedText(key * 5 + i, 3, 18) + " " + std::to_string(i);
    return texts;
}

// Levels K and 1 add small numbers, 2 subtracts too, 3 and 4 multiply, and from
// 5 on all four operations are asked, with numbers up to 12.
ArithmeticAnswer arithmeticQuestion(Draw &draw, int level, int &blankCounter)
{
    const int operations = level < 2 ? 1 : level < 3 ? 2 : level < 5 ? 3 : 4;
    const int high = level == 0 ? 5 : level == 1 ? 10 : 12;
    ArithmeticAnswer answer;
    answer.operation = draw.between(0, operations - 1);
    const std::int64_t a = draw.between(answer.operation == 3 ? 1 : 0, high);
    const std::int64_t b = draw.between(0, high);
    switch (answer.operation) {
    case 0:
        answer = {a, b, a + b, 0, 2, {}, false};
        break;
    case 1:
        answer = {a + b, a, b, 1, 2, {}, false};
        break;
    case 2:
        answer = {a, b, a * b, 2, 2, {}, false};
        break;
    default:
        answer = {a * b, a, b, 3, 2, {}, false};
        break;
    }
    if (level >= 3) {
        blankCounter = (blankCounter + 1) % 3;
        answer.blank = blankCounter;
    }
    return answer;
}

// Weekdays from the first of September to the end of June, then on into the
// summer should a student's share of answers not be used up.
CivilTime schoolDay(int schoolDay)
{
    const LocalSeconds first = toLocalSeconds({2026, 9, 1});
    int weekdays = 0;
    for (LocalSeconds day = first;; day += 86400) {
        const int weekday = static_cast<int>((day / 86400 + 4) % 7); // 1970-01-01 was a Thursday
        if (weekday == 0 || weekday == 6)
            continue;
        if (weekdays++ == schoolDay)
            return toCivilTime(day);
    }
}

void recordStudent(History &history, ManualClock &clock, const HistorySize &size, int student,
                   std::int64_t answers)
{
    Draw draw(size.seed ^ static_cast<std::uint32_t>(student * 2654435761u));
    const int level = draw.between(0, 12);
    const int skill = draw.between(60, 97);
    std::array<int, ChoiceSubjectsPerStudent> subjects{};
    for (int &subject : subjects)
        subject = draw.between(1, SubjectCount - 1);
    HistoryRecorder &recorder = history.recorder();
    int blankCounter = 0;
    for (int day = 0; answers > 0; ++day) {
        CivilTime time = schoolDay(day);
        time.hour = 8;
        time.minute = draw.between(30, 59);
        for (int test = draw.between(1, 4); test > 0 && answers > 0; --test) {
            clock.setLocalTime(time);
            const bool arithmetic = draw.chance(50);
            const int subject = arithmetic ? 0 : subjects[std::size_t(draw.between(0, 3))];
            const int testLevel =
                std::clamp(level + (draw.chance(20) ? draw.between(-1, 1) : 0), 0, 12);
            const bool practice = draw.chance(5);
            recorder.beginTest({student, subject, testLevel, TestSeconds, practice});
            int rights = 0;
            int wrongs = 0;
            for (int elapsed = 0; elapsed < TestSeconds * 1000 && answers > 0; --answers) {
                const int took = draw.between(600, arithmetic ? 3500 : 5000);
                elapsed += took;
                clock.advance(took);
                const bool right = draw.chance(skill);
                (right ? rights : wrongs)++;
                if (arithmetic) {
                    ArithmeticAnswer answer = arithmeticQuestion(draw, testLevel, blankCounter);
                    const std::int64_t boxes[3] = {answer.number1, answer.number2, answer.result};
                    const std::int64_t value = boxes[answer.blank];
                    answer.typed = std::to_string(right ? value : value + draw.between(1, 3));
                    answer.correct = right;
                    recorder.recordArithmetic(answer);
                } else {
                    const std::array<std::string, 5> texts =
                        bankQuestion(subject, testLevel, draw.between(0, QuestionsPerLevel - 1));
                    ChoiceAnswer answer;
                    answer.question = texts[0];
                    answer.right = draw.between(0, 3);
                    for (int position = 0, wrong = 2; position < 4; ++position) {
                        answer.choices[std::size_t(position)] =
                            position == answer.right ? texts[1] : texts[std::size_t(wrong++)];
                    }
                    answer.chosen = right ? answer.right : (answer.right + draw.between(1, 3)) % 4;
                    recorder.recordChoice(answer);
                }
            }
            recorder.endTest({rights - wrongs, rights, wrongs, draw.chance(5)});
            time.minute = std::min(59, time.minute + 5);
            time.hour += draw.between(1, 2);
        }
    }
}

fs::path baseDirectory()
{
    const char *chosen = std::getenv("TAVRINO_BENCH_DIR");
    return chosen && *chosen ? fs::path(chosen) : fs::temp_directory_path();
}

} // namespace

std::vector<std::string> historyStudentNames(const HistorySize &size)
{
    std::vector<std::string> names;
    for (int i = 0; i < size.students; ++i) {
        std::string name(FirstNames[std::size_t(i) % FirstNames.size()]);
        name += ' ';
        name += LastNames[std::size_t(i) / FirstNames.size() % LastNames.size()];
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> historySubjectNames()
{
    std::vector<std::string> names(BuiltInSubjects.begin(), BuiltInSubjects.end());
    for (int subject = int(names.size()); subject < SubjectCount; ++subject)
        names.push_back("Topic " + std::to_string(subject));
    return names;
}

void writeLargeHistory(const fs::path &dataDir, const HistorySize &size,
                       void (*progress)(std::int64_t answers))
{
    fs::create_directories(dataDir);
    ManualClock clock;
    History history(dataDir, clock);
    if (!history.isOn())
        throw std::runtime_error(history.takeMessage().value_or("the history did not open"));
    history.roster().matchRoster(historyStudentNames(size));
    history.subjects().matchSubjects(historySubjectNames());
    std::int64_t done = 0;
    for (int first = 0; first < size.students; first += StudentsPerCommit) {
        const History::Batch batch(history);
        for (int student = first; student < std::min(size.students, first + StudentsPerCommit);
             ++student) {
            const std::int64_t share =
                size.answers / size.students + (student < size.answers % size.students ? 1 : 0);
            recordStudent(history, clock, size, student, share);
            done += share;
        }
        if (progress)
            progress(done);
    }
    if (!history.isOn())
        throw std::runtime_error(history.takeMessage().value_or("the history failed"));
}

fs::path cachedLargeHistory(const HistorySize &size)
{
    const fs::path folder = baseDirectory() / "tavrino-history-cache";
    const fs::path cached =
        folder /
        ("History-v" + std::to_string(HistorySchemaVersion) + "-" + std::to_string(size.students) +
         "x" + std::to_string(size.answers) + "-" + std::to_string(size.seed) + ".db");
    if (fs::exists(cached))
        return cached;
    const fs::path making = folder / ("making-" + std::to_string(::getpid()));
    fs::remove_all(making);
    writeLargeHistory(making, size, [](std::int64_t answers) {
        std::fprintf(stderr, "  %lld answers recorded\n", static_cast<long long>(answers));
    });
    fs::rename(making / "Tavrino_History.db", cached);
    fs::remove_all(making);
    return cached;
}
