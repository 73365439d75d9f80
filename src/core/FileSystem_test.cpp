// The data files in a folder whose name is not ASCII, saves that fail before the
// replace, and the words for the system's errors: the same on every system.
#include "core/FileSystem.h"

#include "core/AtomicFile.h"
#include "core/CoreFixtures_test.h"
#include "core/ReadFile.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// "déjà 名": letters of Windows-1252 and one beyond it, which a narrow
// Windows path could not hold.
const fs::path AccentedFolder = fs::u8path("d\u00E9j\u00E0 \u540D");

std::vector<std::string> namesIn(const fs::path &dir)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(dir)) {
        names.push_back(entry.path().filename().u8string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(FileSystem, DataFilesRoundTripInAFolderNamedOutsideAscii)
{
    const ScratchDir scratch;
    const fs::path dir = scratch.path() / AccentedFolder;
    ASSERT_TRUE(fs::create_directory(dir));
    const fs::path testsPath = dir / "Tavrino_Tests.dat";
    const fs::path studentsPath = dir / "Tavrino_Students.dat";

    const TestBank bank = grownBank();
    const StudentRecords roster = sampleRoster(bank.subjectMax);
    ASSERT_FALSE(saveTests(bank, testsPath));
    ASSERT_FALSE(saveStudents(roster, studentsPath));
    EXPECT_EQ(namesIn(dir),
              (std::vector<std::string>{"Tavrino_Students.dat", "Tavrino_Tests.dat"}));

    TestBank loadedBank;
    ASSERT_EQ(loadTests(loadedBank, testsPath).status, LoadResult::Status::Loaded);
    expectSameBank(loadedBank, bank);
    StudentRecords loadedRoster;
    ASSERT_EQ(loadStudents(loadedRoster, loadedBank, studentsPath).status,
              LoadResult::Status::Loaded);
    expectSameRecords(loadedRoster, roster);

    // A file read whole gives back every byte, and the messages name the folder in UTF-8.
    FileReader reader(testsPath);
    ASSERT_FALSE(reader.missing());
    ASSERT_FALSE(reader.error());
    const FileBytes bytes(reader);
    EXPECT_EQ(std::string(bytes.view()), readBytes(testsPath));
    writeBytes(testsPath, "short");
    const LoadResult damaged = loadTests(loadedBank, testsPath);
    ASSERT_TRUE(damaged.error);
    EXPECT_NE(damaged.error->message().find("d\u00E9j\u00E0 \u540D"), std::string::npos)
        << damaged.error->message();
}

TEST(FileSystem, ASaveThatFailsBeforeTheReplaceLeavesTheOldFileByteForByte)
{
    const ScratchDir scratch;
    const fs::path dir = scratch.path() / AccentedFolder;
    ASSERT_TRUE(fs::create_directory(dir));
    const fs::path path = dir / "Tavrino_Students.dat";
    StudentRecords roster = sampleRoster(5);
    ASSERT_FALSE(saveStudents(roster, path));
    const std::string before = readBytes(path);
    roster.students.resize(60, newStudent(5)); // the new file would be longer

    const SaveFault faults[] = {{SaveStep::Create, EACCES, 0},
                                {SaveStep::Write, ENOSPC, 1},
                                {SaveStep::Flush, EIO, 0},
                                {SaveStep::Close, ENOSPC, 0},
                                {SaveStep::Rename, EBUSY, 0}};
    for (const SaveFault &fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault.step));
        std::optional<FileError> error;
        {
            const InjectedSaveFault inject(fault);
            error = saveStudents(roster, path);
        }
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
        EXPECT_NE(error->message().find(systemErrorText(fault.error)), std::string::npos)
            << error->message();
        EXPECT_EQ(readBytes(path), before);
        EXPECT_EQ(namesIn(dir), std::vector<std::string>{"Tavrino_Students.dat"});
    }
    ASSERT_FALSE(saveStudents(roster, path));
    EXPECT_NE(readBytes(path), before);
}

TEST(FileSystem, MissingFoldersAndEndedSavesAreToldApart)
{
    const ScratchDir scratch;
    const fs::path dir = scratch.path() / AccentedFolder;
    ASSERT_TRUE(fs::create_directory(dir));

    // A file in a folder that is not there is missing, not unreadable; saving
    // there fails with the same words on every system.
    const fs::path absent = dir / "absent" / "Tavrino_Tests.dat";
    EXPECT_TRUE(FileReader(absent).missing());
    const std::optional<FileError> error = writeFileAtomically(absent, "x");
    ASSERT_TRUE(error);
    EXPECT_NE(error->message().find("No such file or directory"), std::string::npos)
        << error->message();

    // A temporary file of a process that cannot exist (no system gives out a
    // number this high) is cleaned up; one of this process is left alone.
    const fs::path target = dir / "Tavrino_Tests.dat";
    const std::string own = "Tavrino_Tests.dat.tmp" + std::to_string(currentProcessId()) + "-0";
    writeBytes(dir / own, "mine");
    writeBytes(dir / "Tavrino_Tests.dat.tmp999999999-0", "stale");
    EXPECT_FALSE(processHasEnded(currentProcessId()));
    EXPECT_TRUE(processHasEnded(999999999));
    removeStaleTemporaries(target);
    EXPECT_EQ(namesIn(dir), std::vector<std::string>{own});
}

TEST(FileSystem, ErrorsAreWordedAlikeOnEverySystem)
{
    const std::pair<int, const char *> words[] = {
        {ENOENT, "No such file or directory"},
        {EACCES, "Permission denied"},
        {ENOSPC, "No space left on device"},
        {EROFS, "Read-only file system"},
    };
    for (const auto &[error, text] : words) {
        EXPECT_EQ(systemErrorText(error), text);
    }
}
