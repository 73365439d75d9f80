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

TEST(SafeSave, AFailureAtAnyStepLeavesTheOldFileAndNoTemporaryFile)
{
    const ScratchDir dir;
    const auto path = dir / "data.dat";
    const std::vector<std::string> pieces = {std::string(AtomicWriteChunk + 7, 'a'), "b",
                                             std::string(2 * AtomicWriteChunk, 'c')};
    std::string whole;
    for (const std::string &piece : pieces) {
        whole += piece;
    }
    const ContentMaker make = [&](const std::function<void(std::string_view)> &write) {
        for (const std::string &piece : pieces) {
            write(piece);
        }
    };
    ASSERT_FALSE(WriteFileAtomically(path, make));
    EXPECT_EQ(ReadBytes(path), whole);
    ASSERT_FALSE(WriteFileAtomically(path, ""));
    EXPECT_EQ(ReadBytes(path), "");

    // Every step can fail, and every write, whichever of the made pieces it lies in;
    // the data files are saved the same way.
    std::vector<SaveFault> faults = {{SaveStep::Create, EACCES, 0},
                                     {SaveStep::Flush, EIO, 0},
                                     {SaveStep::Close, EDQUOT, 0},
                                     {SaveStep::Rename, EXDEV, 0}};
    const std::size_t writes = (whole.size() + AtomicWriteChunk - 1) / AtomicWriteChunk;
    for (std::size_t index = 0; index < writes; ++index) {
        faults.push_back({SaveStep::Write, index % 2 ? ENOSPC : EFBIG, index});
    }
    const TestBank bank = GrownBank();
    StudentRecords roster = Roster(5);
    roster.Students.resize(40, NewStudent(5));
    using Save = std::function<std::optional<FileError>(const std::filesystem::path &)>;
    const std::pair<std::string, Save> saves[] = {
        {"data.dat", [&](const auto &to) { return WriteFileAtomically(to, make); }},
        {"data.dat", [&](const auto &to) { return WriteFileAtomically(to, whole); }},
        {"Tavrino_Tests.dat", [&](const auto &to) { return SaveTests(bank, to); }},
        {"Tavrino_Students.dat", [&](const auto &to) { return SaveStudents(roster, to); }},
    };
    for (const auto &[name, save] : saves) {
        for (const SaveFault &fault : faults) {
            SCOPED_TRACE(name + " step " + std::to_string(static_cast<int>(fault.step)) +
                         " write " + std::to_string(fault.writeIndex));
            WriteBytes(dir / name, "old");
            std::optional<FileError> error;
            {
                const InjectedSaveFault inject(fault);
                error = save(dir / name);
            }
            ASSERT_TRUE(error);
            EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
            EXPECT_EQ(error->path, (dir / name).string());
            const std::string message = error->message();
            EXPECT_NE(message.find((dir / name).string()), std::string::npos) << message;
            EXPECT_NE(message.find(std::strerror(fault.error)), std::string::npos) << message;
            EXPECT_EQ(ReadBytes(dir / name), "old");
            EXPECT_EQ(dir.entries(), std::vector<std::string>{name});
        }
        std::filesystem::remove(dir / name);
    }
    // A write fault past the last chunk never triggers: the save goes through.
    {
        const InjectedSaveFault late({SaveStep::Write, EIO, writes});
        EXPECT_FALSE(WriteFileAtomically(path, whole));
        EXPECT_EQ(ReadBytes(path), whole);
    }

    // A failure of the maker's own passes on, and nothing of its content stays.
    WriteBytes(path, "old");
    const ContentMaker failing = [](const std::function<void(std::string_view)> &write) {
        write("part of it");
        throw std::runtime_error("the content could not be made");
    };
    EXPECT_THROW(WriteFileAtomically(path, failing), std::runtime_error);
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"data.dat"});

    // A missing directory is reported, not created.
    const std::optional<FileError> error = WriteFileAtomically(dir / "absent" / "data.dat", "x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
    EXPECT_NE(error->cause.find(std::strerror(ENOENT)), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "absent"));
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

    std::vector<std::string> kept = {
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
    kept.push_back("Tavrino_Tests.dat");
    std::vector<std::string> entries = dir.entries();
    std::sort(entries.begin(), entries.end());
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(entries, kept);
}
