// Saving never loses the previous file when any step of a save fails, and the
// temporary files of saves that never finished can be cleaned up.
#include "core/AtomicFile.h"
#include "core/CoreFixtures_test.h"
#include "core/FileSystem.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

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
    ASSERT_FALSE(writeFileAtomically(path, make));
    EXPECT_EQ(readBytes(path), whole);
    ASSERT_FALSE(writeFileAtomically(path, ""));
    EXPECT_EQ(readBytes(path), "");

    // Every step can fail, and every write, whichever of the made pieces it lies in;
    // the data files are saved the same way.
    std::vector<SaveFault> faults = {{SaveStep::Create, EACCES, 0},
                                     {SaveStep::Flush, EIO, 0},
                                     {SaveStep::Close, EROFS, 0},
                                     {SaveStep::Rename, EXDEV, 0}};
    const std::size_t writes = (whole.size() + AtomicWriteChunk - 1) / AtomicWriteChunk;
    for (std::size_t index = 0; index < writes; ++index) {
        faults.push_back({SaveStep::Write, index % 2 ? ENOSPC : EFBIG, index});
    }
    const TestBank bank = grownBank();
    StudentRecords roster = sampleRoster(5);
    roster.students.resize(40, newStudent(5));
    using Save = std::function<std::optional<FileError>(const std::filesystem::path &)>;
    const std::pair<std::string, Save> saves[] = {
        {"data.dat", [&](const auto &to) { return writeFileAtomically(to, make); }},
        {"data.dat", [&](const auto &to) { return writeFileAtomically(to, whole); }},
        {"Tavrino_Tests.dat", [&](const auto &to) { return saveTests(bank, to); }},
        {"Tavrino_Students.dat", [&](const auto &to) { return saveStudents(roster, to); }},
    };
    for (const auto &[name, save] : saves) {
        for (const SaveFault &fault : faults) {
            SCOPED_TRACE(name + " step " + std::to_string(static_cast<int>(fault.step)) +
                         " write " + std::to_string(fault.writeIndex));
            writeBytes(dir / name, "old");
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
            EXPECT_NE(message.find(systemErrorText(fault.error)), std::string::npos) << message;
            EXPECT_EQ(readBytes(dir / name), "old");
            EXPECT_EQ(dir.entries(), std::vector<std::string>{name});
        }
        std::filesystem::remove(dir / name);
    }
    // A write fault past the last chunk never triggers: the save goes through.
    {
        const InjectedSaveFault late({SaveStep::Write, EIO, writes});
        EXPECT_FALSE(writeFileAtomically(path, whole));
        EXPECT_EQ(readBytes(path), whole);
    }

    // A failure of the maker's own passes on, and nothing of its content stays.
    writeBytes(path, "old");
    const ContentMaker failing = [](const std::function<void(std::string_view)> &write) {
        write("part of it");
        throw std::runtime_error("the content could not be made");
    };
    EXPECT_THROW(writeFileAtomically(path, failing), std::runtime_error);
    EXPECT_EQ(readBytes(path), "old");
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"data.dat"});

    // A missing directory is reported, not created.
    const std::optional<FileError> error = writeFileAtomically(dir / "absent" / "data.dat", "x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
    EXPECT_NE(error->cause.find(systemErrorText(ENOENT)), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "absent"));
}

TEST(SafeSave, OnlyTemporaryFilesOfEndedProcessesAreCleanedUp)
{
#ifdef _WIN32
    GTEST_SKIP() << "needs fork() for a process that has ended and a parent that still runs";
#else
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
        writeBytes(dir / name, "keep");
    }
    writeBytes(dir / ("Tavrino_Tests.dat.tmp" + gone + "-0"), "stale");
    writeBytes(dir / ("Tavrino_Tests.dat.tmp" + gone + "-12"), "stale");

    // A save leaves them: only the holder of the data folder's lock may clean up.
    ASSERT_FALSE(writeFileAtomically(dir / "Tavrino_Tests.dat", "new"));
    EXPECT_EQ(dir.entries().size(), kept.size() + 3);
    removeStaleTemporaries(dir / "Tavrino_Tests.dat");
    kept.push_back("Tavrino_Tests.dat");
    std::vector<std::string> entries = dir.entries();
    std::sort(entries.begin(), entries.end());
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(entries, kept);
#endif
}
