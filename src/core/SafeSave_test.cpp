// Saving never loses the previous file: not when any step of a save fails, not
// when the saving process is killed, and killed saves leave no litter for good.
#include "core/AtomicFile.h"
#include "core/CoreTesting.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// The default bank grown to questionMax, every slot of every stored subject filled
// with texts that carry tag, so that two tags give two different files.
TestBank LargeBank(int32_t questionMax, const std::string &tag)
{
    TestBank bank = DefaultTestBank();
    ResizeQuestionSlots(bank, questionMax);
    for (std::size_t s = SpellingSubject; s < bank.QuestionBank.size(); ++s) {
        for (int level = 0; level < LevelCount; ++level) {
            for (int32_t slot = 0; slot <= questionMax; ++slot) {
                const std::string id = tag + " " + std::to_string(s) + "." + std::to_string(level) +
                                       "." + std::to_string(slot);
                bank.QuestionBank[s].Items()[level][slot] = {"Which is " + id + "?", id,
                                                             "not " + id, "", "never " + tag};
            }
            bank.Limits[s].LastQuestion[level] = questionMax;
        }
    }
    return bank;
}

StudentRecords Roster(std::size_t students, const std::string &prefix)
{
    StudentRecords records;
    for (std::size_t i = 0; i < students; ++i) {
        records.Students.push_back(NewStudent(5));
        records.Students.back().Name = prefix + " " + std::to_string(i);
        records.Students.back().Results[2].High[4] = static_cast<int16_t>(i);
    }
    records.Students.front().Current = true;
    return records;
}

struct SavedFile {
    std::string name;
    std::function<std::optional<FileError>(const std::filesystem::path &)> saveOld;
    std::function<std::optional<FileError>(const std::filesystem::path &)> saveNew;
    std::size_t newSize;
};

std::size_t EncodedSize(const TestBank &bank)
{
    std::string bytes;
    EXPECT_FALSE(EncodeTestsFile(bank, "", bytes));
    return bytes.size();
}

std::size_t EncodedSize(const StudentRecords &records)
{
    std::string bytes;
    EXPECT_FALSE(EncodeStudentsFile(records, "", bytes));
    return bytes.size();
}

} // namespace

TEST(SafeSave, AFailureAtEveryStepOfEitherFileKeepsTheOldFile)
{
    const ScratchDir dir;
    const TestBank oldBank = DefaultTestBank();
    const TestBank newBank = LargeBank(14, "new");
    const StudentRecords oldRoster = Roster(3, "Old");
    const StudentRecords newRoster = Roster(40, "New");
    const std::vector<SavedFile> files = {
        {"Tavrino_Tests.dat", [&](const auto &path) { return SaveTests(oldBank, path); },
         [&](const auto &path) { return SaveTests(newBank, path); }, EncodedSize(newBank)},
        {"Tavrino_Students.dat", [&](const auto &path) { return SaveStudents(oldRoster, path); },
         [&](const auto &path) { return SaveStudents(newRoster, path); }, EncodedSize(newRoster)},
    };
    for (const SavedFile &file : files) {
        const auto path = dir / file.name;
        ASSERT_FALSE(file.saveOld(path));
        const std::string old = ReadBytes(path);

        std::vector<SaveFault> faults = {{SaveStep::Create, EACCES, 0},
                                         {SaveStep::Flush, EIO, 0},
                                         {SaveStep::Close, EDQUOT, 0},
                                         {SaveStep::Rename, EROFS, 0}};
        const std::size_t writes = (file.newSize + AtomicWriteChunk - 1) / AtomicWriteChunk;
        ASSERT_GE(writes, 3u) << file.name;
        for (std::size_t index = 0; index < writes; ++index) {
            faults.push_back({SaveStep::Write, index % 2 ? ENOSPC : EFBIG, index});
        }
        for (const SaveFault &fault : faults) {
            SCOPED_TRACE(file.name + " step " + std::to_string(static_cast<int>(fault.step)) +
                         " write " + std::to_string(fault.writeIndex));
            std::optional<FileError> error;
            {
                const InjectedSaveFault inject(fault);
                error = file.saveNew(path);
            }
            ASSERT_TRUE(error);
            EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
            const std::string message = error->message();
            EXPECT_NE(message.find(path.string()), std::string::npos) << message;
            EXPECT_NE(message.find(std::strerror(fault.error)), std::string::npos) << message;
            EXPECT_EQ(ReadBytes(path), old);
            EXPECT_EQ(dir.entries(), std::vector<std::string>{file.name});
        }
        std::filesystem::remove(path);
    }
}

TEST(SafeSave, ASaveKilledAtAnyMomentLeavesOneWholeBank)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Tests.dat";
    const std::vector<TestBank> banks = {LargeBank(25, "First"), LargeBank(31, "Second bank")};
    std::vector<std::string> expected(2);
    for (std::size_t i = 0; i < banks.size(); ++i) {
        ASSERT_FALSE(EncodeTestsFile(banks[i], path, expected[i]));
    }
    ASSERT_NE(expected[0].size(), expected[1].size());

    // The kills fall anywhere within about three saves, however long a save takes
    // in this build; at least 20 ms, so that short saves are hit at every stage.
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    ASSERT_FALSE(SaveTests(banks[1], path));
    ASSERT_FALSE(SaveTests(banks[0], path));
    const auto window = std::clamp(
        std::chrono::duration_cast<std::chrono::microseconds>((Clock::now() - start) * 3 / 2),
        std::chrono::microseconds(20000), std::chrono::microseconds(400000));
    std::mt19937 rng(7);
    std::uniform_int_distribution<long> delay(0, window.count());

    std::vector<int> seen(2, 0);
    int interrupted = 0;
    for (int kill = 0; kill < 50; ++kill) {
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0) << std::strerror(errno);
        if (child == 0) {
            // Saves the other bank first, so that every finished save changes the file.
            const std::size_t first = ReadBytes(path) == expected[0] ? 1 : 0;
            const char go = 1;
            if (::write(ready[1], &go, 1) != 1) {
                ::_exit(2);
            }
            for (std::size_t n = first;; ++n) {
                if (SaveTests(banks[n % 2], path)) {
                    ::_exit(1);
                }
            }
        }
        char go = 0;
        const ssize_t got = ::read(ready[0], &go, 1);
        ::close(ready[0]);
        ::close(ready[1]);
        std::this_thread::sleep_for(std::chrono::microseconds(delay(rng)));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(got, 1);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
            << "the saving process stopped by itself: " << status;

        const std::string onDisk = ReadBytes(path);
        const auto which = std::find(expected.begin(), expected.end(), onDisk) - expected.begin();
        ASSERT_LT(which, 2) << "kill " << kill << " left " << onDisk.size() << " bytes";
        ++seen[which];
        TestBank loaded;
        ASSERT_EQ(LoadTests(loaded, path).status, LoadResult::Status::Loaded);
        interrupted += dir.entries().size() > 1 ? 1 : 0;
    }
    // Saves finished between the kills, and kills landed in the middle of saves.
    EXPECT_GT(seen[1], 0);
    EXPECT_GT(interrupted, 0);

    // Whatever the killed saves left behind goes with the next save that succeeds.
    for (const std::string &name : dir.entries()) {
        EXPECT_EQ(name.rfind("Tavrino_Tests.dat", 0), 0u) << name;
    }
    ASSERT_FALSE(SaveTests(banks[1], path));
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"Tavrino_Tests.dat"});
}

TEST(SafeSave, OnlyTemporaryFilesOfEndedProcessesAreCleanedUp)
{
    const ScratchDir dir;
    const pid_t ended = ::fork();
    ASSERT_GE(ended, 0);
    if (ended == 0) {
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    const std::string gone = std::to_string(ended);
    // The parent of this test runs now, as another instance of the program could.
    const std::string running = std::to_string(::getppid());

    const std::vector<std::string> kept = {
        "Tavrino_Students.dat.tmp" + gone + "-0", // another file's
        "Tavrino_Tests.dat.tmp" + running + "-3", // a save under way
        "Tavrino_Tests.dat.tmp" + gone,           // not a name the writer makes
        "Tavrino_Tests.dat.tmp" + gone + "-1x",   "Tavrino_Tests.dat.bak",
    };
    for (const std::string &name : kept) {
        WriteBytes(dir / name, "keep");
    }
    WriteBytes(dir / ("Tavrino_Tests.dat.tmp" + gone + "-0"), "stale");
    WriteBytes(dir / ("Tavrino_Tests.dat.tmp" + gone + "-12"), "stale");

    ASSERT_FALSE(WriteFileAtomically(dir / "Tavrino_Tests.dat", "new"));
    std::vector<std::string> expected = kept;
    expected.push_back("Tavrino_Tests.dat");
    std::vector<std::string> entries = dir.entries();
    std::sort(entries.begin(), entries.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(entries, expected);
}
