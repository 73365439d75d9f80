// A school day on one machine: a thousand tests in one process through the main
// screen, ended by Stop and by the clock, with the current student changing now
// and then. Afterwards the Students file must hold exactly the scores the tests
// produced, and the process must not have grown while it ran.
#include "MainScreenFixture.h"

#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace {

constexpr int Tests = 1000;
constexpr int TestSeconds = 5;
constexpr int Students = 3;
constexpr long AllowedGrowthKb = 5 * 1024;

// AddressSanitizer holds freed memory back in quarantine, so resident memory
// says nothing about leaks there; it reports leaks itself at exit.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool ResidentMemoryTellsLeaks = false;
#else
constexpr bool ResidentMemoryTellsLeaks = true;
#endif

// Subjects and levels taken in turn: Arithmetic on levels whose numbers never
// make a blank unanswerable, and every built-in multiple-choice subject.
struct Choice {
    int subject;
    int level;
};
constexpr std::array<Choice, 13> Choices = {{{0, 0},
                                             {1, 3},
                                             {0, 5},
                                             {2, 1},
                                             {0, 8},
                                             {3, 12},
                                             {4, 0},
                                             {0, 3},
                                             {5, 7},
                                             {1, 0},
                                             {0, 12},
                                             {2, 6},
                                             {0, 4}}};

// Resident memory in kB, after handing freed heap back to the system so that
// only memory still in use counts.
long ResidentKb()
{
    malloc_trim(0);
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6));
    return -1;
}

// Points temporary files at a directory while it lives, and back after.
class TmpDirSetting {
public:
    explicit TmpDirSetting(const char *tmpDir)
    {
        if (const char *previous = std::getenv("TMPDIR"))
            m_previous = previous;
        setenv("TMPDIR", tmpDir, 1);
    }
    ~TmpDirSetting()
    {
        if (m_previous)
            setenv("TMPDIR", m_previous->c_str(), 1);
        else
            unsetenv("TMPDIR");
    }

private:
    std::optional<std::string> m_previous;
};

// Every save is flushed to disk twice (the file, then its directory), and a
// test saves three times (subject, level, end): on a real disk the run would be
// almost all waiting for it. A memory-backed directory, where there is one,
// keeps the saves real and the run about the program. Like any TempDataDir it
// is removed with the test, however the test ends.
std::optional<TempDataDir> MemoryBackedDir()
{
    std::error_code error;
    if (!std::filesystem::is_directory("/dev/shm", error))
        return std::nullopt;
    const TmpDirSetting inMemory("/dev/shm");
    return std::optional<TempDataDir>(std::in_place);
}

struct Scores {
    int last = 0;
    int high = 0;
};

} // namespace

class LongUseTest : public MainScreenTest {
protected:
    std::optional<TempDataDir> memoryDir = MemoryBackedDir();

    void SetUp() override
    {
        MainScreenTest::SetUp();
        if (memoryDir)
            session.paths = memoryDir->paths();
        StudentRecords records;
        for (const char *name : {"Ann", "Bob", "Cy"}) {
            records.Students.push_back(NewStudent(5));
            records.Students.back().Name = name;
        }
        records.Students[0].Current = true;
        ASSERT_FALSE(SaveStudents(records, session.paths.StudentsPath).has_value());
        saveTestsWith([](TestBank &bank) {
            for (SubjectLimits &limits : bank.Limits)
                limits.Seconds = TestSeconds;
        });
    }
};

TEST_F(LongUseTest, AThousandTestsLeaveExactlyTheirScoresOnDiskAndMemoryFlat)
{
    startUp();
    ASSERT_EQ(session.records.Students.size(), static_cast<std::size_t>(Students));

    std::map<std::tuple<int, int, int>, Scores> expected; // by student, subject, level
    long residentAfterWarmUp = 0;
    const auto started = std::chrono::steady_clock::now();
    for (int test = 0; test < Tests; ++test) {
        if (test % 7 == 3) {
            nextStudent = (test / 7) % Students;
            screen->cmdSelectStudent_Click();
            ASSERT_EQ(text("lblStudent"),
                      QString::fromStdString(session.records.Students[nextStudent].Name));
        }
        const Choice choice = Choices[test % Choices.size()];
        combo("cmbSubject")->setCurrentIndex(choice.subject);
        chooseLevel(choice.level);
        ASSERT_EQ(session.records.CurrentLevel, choice.level)
            << choice.subject << "/" << choice.level;

        screen->cmdStartTest_Click();
        const int rights = 1 + test % 3;
        const int wrongs = (test / 3) % 3;
        for (int turn = 0; turn < std::max(rights, wrongs); ++turn)
            for (const bool right : {true, false})
                if (turn < (right ? rights : wrongs)) {
                    if (choice.subject == ArithmeticSubject)
                        typeAnswer(right);
                    else
                        choose(right);
                }
        ASSERT_EQ(text("lblScoreTotal"), QString::number(rights - wrongs)) << "test " << test;

        if (test % 5 < 2) {
            tick(TestSeconds);
            ASSERT_FALSE(shown("cmdStartTest"));
            tick(1); // the pause before Start comes back
        } else {
            screen->cmdStop_Click();
        }
        ASSERT_TRUE(shown("cmdStartTest"));

        Scores &scores = expected[{session.records.CurrentStudent, choice.subject, choice.level}];
        scores.last = rights - wrongs;
        scores.high = std::max(scores.high, scores.last);
        ASSERT_EQ(text("lblLastScore"), QString::number(scores.last)) << "test " << test;
        ASSERT_EQ(text("lblHighScore"), QString::number(scores.high)) << "test " << test;

        // Between tests the program is back in its event loop, which delivers
        // what the screen queued (repaints, window-system events); the clock is
        // stopped, so no tick can come from here.
        ASSERT_FALSE(find<QTimer>("Timer1")->isActive());
        QCoreApplication::processEvents();

        if (test == 99)
            residentAfterWarmUp = ResidentKb();
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    const long residentAtEnd = ResidentKb();
    std::cout << Tests << " tests in " << seconds << " s; resident memory " << residentAfterWarmUp
              << " kB after 100, " << residentAtEnd << " kB after " << Tests << "\n";
    if (ResidentMemoryTellsLeaks) {
        EXPECT_LE(residentAtEnd - residentAfterWarmUp, AllowedGrowthKb);
    }

    // What a restart would find.
    TestBank bank;
    ASSERT_EQ(LoadTests(bank, session.paths.TestsPath).status, LoadResult::Status::Loaded);
    StudentRecords onDisk;
    ASSERT_EQ(LoadStudents(onDisk, bank, session.paths.StudentsPath).status,
              LoadResult::Status::Loaded);
    ASSERT_EQ(onDisk.Students.size(), static_cast<std::size_t>(Students));
    for (int student = 0; student < Students; ++student)
        for (int subject = 0; subject <= bank.SubjectMax; ++subject)
            for (int level = 0; level < LevelCount; ++level) {
                const auto found = expected.find({student, subject, level});
                const Scores want = found == expected.end() ? Scores{} : found->second;
                const SubjectResults &results = onDisk.Students[student].Results.at(subject);
                EXPECT_TRUE(results.Last[level] == want.last && results.High[level] == want.high)
                    << "student " << student << " subject " << subject << " level " << level
                    << ": file Last/High " << results.Last[level] << "/" << results.High[level]
                    << ", tests gave " << want.last << "/" << want.high;
            }
    EXPECT_EQ(expected.size(), Choices.size() * Students) << "every student took every choice";
}
