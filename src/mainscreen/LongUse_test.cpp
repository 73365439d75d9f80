// A school day on one machine: a thousand tests in one process through the main
// screen, ended by Stop and by the clock, with the current student changing now
// and then. Afterwards the Students file must hold exactly the scores the tests
// produced, and the process must not have grown while it ran.
#include "MainScreenFixture_test.h"

#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace {

constexpr int TestSeconds = 5;
constexpr int Students = 3;

// Subjects and levels taken in turn: Arithmetic on levels whose numbers never
// make a blank unanswerable, and every built-in multiple-choice subject.
constexpr std::pair<int, int> Choices[] = {{0, 0}, {1, 3}, {0, 5}, {2, 1},  {0, 8}, {3, 12}, {4, 0},
                                           {0, 3}, {5, 7}, {1, 0}, {0, 12}, {2, 6}, {0, 4}};

// Resident memory in kB, after handing freed heap back to the system so that
// only memory still in use counts.
long residentKb()
{
    malloc_trim(0);
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6));
    return -1;
}

using Scores = std::pair<int, int>; // Last and High

} // namespace

using LongUseTest = MainScreenTest;

TEST_F(LongUseTest, AThousandTestsLeaveExactlyTheirScoresOnDiskAndMemoryFlat)
{
    // A test saves three times, each flushed to disk twice: a directory in
    // memory, where there is one, keeps the saves real and the run quick.
    std::optional<TempDataDir> memoryDir;
    std::error_code error;
    if (std::filesystem::is_directory("/dev/shm", error)) {
        const char *const tmpDir = std::getenv("TMPDIR");
        const std::string previous = tmpDir ? tmpDir : "";
        setenv("TMPDIR", "/dev/shm", 1);
        session.paths = memoryDir.emplace().paths();
        if (tmpDir)
            setenv("TMPDIR", previous.c_str(), 1);
        else
            unsetenv("TMPDIR");
    }
    saveTestsWith([](TestBank &bank) {
        for (SubjectLimits &limits : bank.limits)
            limits.seconds = TestSeconds;
    });
    startUp();
    for (const char *name : {"Bob", "Cy"}) {
        session.records.students.push_back(newStudent(session.bank.subjectMax));
        session.records.students.back().name = name;
    }

    std::map<std::tuple<int, int, int>, Scores> expected; // by student, subject, level
    [[maybe_unused]] long residentAfterWarmUp = 0;
    for (int test = 0; test < 1000; ++test) {
        if (test % 7 == 3) {
            nextStudent = (test / 7) % Students;
            screen->openStudentsScreen();
        }
        const auto [subject, level] = Choices[test % std::size(Choices)];
        combo("cmbSubject")->setCurrentIndex(subject);
        chooseLevel(level);

        screen->startTest();
        const int rights = 1 + test % 3;
        const int wrongs = (test / 3) % 3;
        for (int answer = 0; answer < rights + wrongs; ++answer)
            subject == ArithmeticSubject ? typeAnswer(answer < rights) : choose(answer < rights);
        if (test % 5 < 2)
            tick(TestSeconds + 1); // the clock runs out, then the pause before Start comes back
        else
            screen->stopTest();
        ASSERT_TRUE(shown("cmdStartTest")) << "test " << test;
        ASSERT_FALSE(find<QTimer>("Timer1")->isActive()) << "no tick comes between tests";

        auto &[last, high] = expected[{session.records.currentStudent, subject, level}];
        last = rights - wrongs;
        high = std::max(high, last);
        QCoreApplication::processEvents();
        if (test == 99)
            residentAfterWarmUp = residentKb();
    }
    [[maybe_unused]] const long residentAtEnd = residentKb();
    // AddressSanitizer holds freed memory back in quarantine, so there resident
    // memory says nothing about leaks; it reports them itself at exit.
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_LE(residentAtEnd - residentAfterWarmUp, 5 * 1024)
        << residentAfterWarmUp << " kB after 100 tests, " << residentAtEnd << " kB at the end";
#endif

    // What a restart would find.
    const StudentRecords onDisk = studentsOnDisk();
    ASSERT_EQ(onDisk.students.size(), static_cast<std::size_t>(Students));
    for (int student = 0; student < Students; ++student)
        for (int subject = 0; subject <= session.bank.subjectMax; ++subject)
            for (int level = 0; level < LevelCount; ++level) {
                const auto found = expected.find({student, subject, level});
                const SubjectResults &results = onDisk.students[student].results.at(subject);
                EXPECT_EQ(Scores(results.last[level], results.high[level]),
                          found == expected.end() ? Scores() : found->second)
                    << "Last and High of student " << student << ", subject " << subject
                    << ", level " << level;
            }
    EXPECT_EQ(expected.size(), std::size(Choices) * Students) << "every student took every choice";
}
