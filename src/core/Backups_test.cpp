// The backups folder at work: when a copy is made and what it is called, which
// copies are kept over many days, what a failed copy does, a restore that puts
// the chosen bytes back and can itself be undone, and all of it in a folder
// whose name is not ASCII.
#include "core/Backups.h"

#include "core/AtomicFile.h"
#include "core/CoreFixtures_test.h"
#include "core/DataFileBackups.h"
#include "core/FileSystem.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

using Status = BackupOutcome::Status;

class BackupsTest : public ::testing::Test {
protected:
    BackupsTest() { std::filesystem::create_directories(paths.dataDir); }

    // The names in the backups folder, sorted.
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        std::error_code ignored;
        for (const auto &entry : std::filesystem::directory_iterator(paths.backupsDir, ignored))
            found.push_back(entry.path().filename().u8string());
        std::sort(found.begin(), found.end());
        return found;
    }

    std::string copyOf(const std::string &name) const { return readBytes(paths.backupsDir / name); }

    ScratchDir dir;
    DataPaths paths = DataPaths::in(dir / "data");
    ManualClock clock{{2026, 11, 24, 10, 15, 3}};
    Backups backups{paths.backupsDir, clock};
};

} // namespace

TEST_F(BackupsTest, ACopyIsMadeOnlyWhenTheFileDiffersFromItsNewestCopy)
{
    addDataFileSources(backups, paths);
    // Nothing to copy, and no folder made for nothing.
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::NoFile);
    EXPECT_FALSE(std::filesystem::exists(paths.backupsDir));

    writeBytes(paths.studentsPath, "one");
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::Unchanged);
    // A second copy within the same second takes a number rather than the name.
    writeBytes(paths.studentsPath, "two");
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    clock.advance(61'000);
    // Compared with the newest copy only: an older one holding the bytes does not count.
    writeBytes(paths.studentsPath, "one");
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    writeBytes(paths.testsPath, "tests");
    EXPECT_EQ(backups.backUp(DataFile::Tests).status, Status::Made);

    EXPECT_EQ(names(), (std::vector<std::string>{
                           "Tavrino_Students 2026-11-24 10-15-03 (2).dat",
                           "Tavrino_Students 2026-11-24 10-15-03.dat",
                           "Tavrino_Students 2026-11-24 10-16-04.dat",
                           "Tavrino_Tests 2026-11-24 10-16-04.dat",
                       }));
    EXPECT_EQ(copyOf("Tavrino_Students 2026-11-24 10-15-03.dat"), "one");
    EXPECT_EQ(copyOf("Tavrino_Students 2026-11-24 10-15-03 (2).dat"), "two");

    // Listed newest first, the numbered copy before the first of its second and
    // the Students file before the Tests file within a second; files that are no
    // copies are left out.
    writeBytes(paths.backupsDir / "notes.txt", "mine");
    writeBytes(paths.backupsDir / "Tavrino_Students 2026-02-30 10-15-03.dat", "not a date");
    std::vector<std::string> listed;
    for (const Backup &backup : backups.list())
        listed.push_back(backup.path.filename().string() + " " + std::to_string(backup.bytes));
    EXPECT_EQ(listed, (std::vector<std::string>{
                          "Tavrino_Students 2026-11-24 10-16-04.dat 3",
                          "Tavrino_Tests 2026-11-24 10-16-04.dat 5",
                          "Tavrino_Students 2026-11-24 10-15-03 (2).dat 3",
                          "Tavrino_Students 2026-11-24 10-15-03.dat 3",
                      }));
}

TEST_F(BackupsTest, OnlyTheFirstSaveOfEachFileInARunIsPrecededByACopy)
{
    addDataFileSources(backups, paths);
    writeBytes(paths.studentsPath, "as the run found it");
    EXPECT_EQ(backups.backUpBeforeFirstSave(DataFile::Students).status, Status::Made);
    writeBytes(paths.studentsPath, "saved once");
    EXPECT_EQ(backups.backUpBeforeFirstSave(DataFile::Students).status, Status::Done);
    // A Tests file made in this run had nothing to copy before its first save.
    EXPECT_EQ(backups.backUpBeforeFirstSave(DataFile::Tests).status, Status::NoFile);
    writeBytes(paths.testsPath, "saved");
    EXPECT_EQ(backups.backUpBeforeFirstSave(DataFile::Tests).status, Status::Done);
    // The actions that wipe data copy the file whenever they come.
    EXPECT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    EXPECT_EQ(backups.list().size(), 2u);
}

TEST_F(BackupsTest, OverManyDaysTheNewestAndOnePerDayAreKept)
{
    addDataFileSources(backups, paths);
    const auto at = [](int day, int hour) {
        return toCivilTime(toLocalSeconds({2026, 1, 1, hour, 0, 0}) + (day - 1) * 86400);
    };
    // Fifty school days, two saves a day, each with new content.
    for (int day = 1; day <= 50; ++day) {
        for (const int hour : {9, 15}) {
            clock.setLocalTime(at(day, hour));
            writeBytes(paths.studentsPath,
                       "day " + std::to_string(day) + " " + std::to_string(hour));
            ASSERT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
        }
    }
    // The last fifteen days whole (thirty copies), then the last copy of each of
    // the fifteen days before them.
    std::vector<std::string> expected;
    for (int day = 21; day <= 50; ++day) {
        for (const int hour : {9, 15}) {
            if (day > 35 || hour == 15) {
                const CivilTime t = at(day, hour);
                char name[64];
                std::snprintf(name, sizeof name, "Tavrino_Students %04d-%02d-%02d %02d-00-00.dat",
                              t.year, t.month, t.day, t.hour);
                expected.push_back(name);
            }
        }
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names(), expected);
    EXPECT_EQ(copyOf("Tavrino_Students 2026-01-21 15-00-00.dat"), "day 21 15");
}

TEST_F(BackupsTest, TestsCopiesStayWithinTheirLimitButTheThreeNewestStay)
{
    addDataFileSources(backups, paths, 100);
    const auto backUpBoth = [&](const std::string &tests) {
        clock.advance(1000);
        writeBytes(paths.testsPath, tests);
        writeBytes(paths.studentsPath, tests + " students");
        ASSERT_EQ(backups.backUp(DataFile::Tests).status, Status::Made);
        ASSERT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    };
    const auto testsCopies = [&] {
        std::vector<std::string> contents;
        for (const Backup &backup : backups.list())
            if (backup.file == DataFile::Tests)
                contents.push_back(readBytes(backup.path));
        return contents;
    };
    // 40 bytes a copy: three make 120, past the limit, and stay all the same.
    for (const char mark : {'a', 'b', 'c', 'd'})
        backUpBoth(std::string(40, mark));
    EXPECT_EQ(testsCopies(), (std::vector<std::string>{std::string(40, 'd'), std::string(40, 'c'),
                                                       std::string(40, 'b')}));
    // Small copies: 10 + 10 + 40 + 40 bytes are within the limit, so four stay.
    backUpBoth(std::string(10, 'e'));
    backUpBoth(std::string(10, 'f'));
    EXPECT_EQ(testsCopies(),
              (std::vector<std::string>{std::string(10, 'f'), std::string(10, 'e'),
                                        std::string(40, 'd'), std::string(40, 'c')}));
    // The Students file's copies have no limit of their own.
    EXPECT_EQ(backups.list().size(), 4u + 6u);
}

TEST_F(BackupsTest, AFailedCopyIsReportedLeavesNothingBehindAndTouchesNoDataFile)
{
    addDataFileSources(backups, paths);
    writeBytes(paths.studentsPath, "results");
    for (const SaveFault &fault :
         {SaveFault{SaveStep::Write, ENOSPC, 0}, SaveFault{SaveStep::Rename, EROFS, 0}}) {
        const InjectedSaveFault inject(fault);
        const BackupOutcome outcome = backups.backUp(DataFile::Students);
        ASSERT_EQ(outcome.status, Status::Failed);
        EXPECT_NE(outcome.problem.find("Tavrino_Students 2026-11-24 10-15-03.dat"),
                  std::string::npos)
            << outcome.problem;
        EXPECT_NE(outcome.problem.find(systemErrorText(fault.error)), std::string::npos)
            << outcome.problem;
    }
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(readBytes(paths.studentsPath), "results");

    // A folder that cannot be made: a file is in its way.
    std::filesystem::remove(paths.backupsDir);
    writeBytes(paths.backupsDir, "in the way");
    const BackupOutcome blocked = backups.backUp(DataFile::Students);
    ASSERT_EQ(blocked.status, Status::Failed);
    EXPECT_NE(blocked.problem.find(paths.backupsDir.u8string()), std::string::npos)
        << blocked.problem;
}

TEST_F(BackupsTest, ARestoreIsByteForByteAndCanItselfBeUndone)
{
    addDataFileSources(backups, paths, 100);
    const std::string first(40, '1');
    const std::string second(40, '2');
    const std::string third(40, '3');
    for (const std::string &content : {first, second, third}) {
        writeBytes(paths.testsPath, content);
        ASSERT_EQ(backups.backUp(DataFile::Tests).status, Status::Made);
        clock.advance(1000);
    }
    writeBytes(paths.testsPath, "now");

    // The oldest copy, which the copy of the file as it is now pushes past the
    // byte limit, is spared until it has been put back.
    const Backup oldest = backups.list().back();
    ASSERT_EQ(readBytes(oldest.path), first);
    ASSERT_FALSE(backups.restore(oldest));
    EXPECT_EQ(readBytes(paths.testsPath), first);
    const Backup undo = backups.list().front();
    EXPECT_EQ(readBytes(undo.path), "now");

    ASSERT_FALSE(backups.restore(undo));
    EXPECT_EQ(readBytes(paths.testsPath), "now");

    // When the file as it is now cannot be copied, nothing is replaced.
    const Backup chosen = backups.list().back();
    {
        const InjectedSaveFault inject({SaveStep::Write, ENOSPC, 0});
        writeBytes(paths.testsPath, "unsaved elsewhere");
        const std::optional<std::string> problem = backups.restore(chosen);
        ASSERT_TRUE(problem);
        EXPECT_NE(problem->find("Tests"), std::string::npos) << *problem;
    }
    EXPECT_EQ(readBytes(paths.testsPath), "unsaved elsewhere");
}

TEST_F(BackupsTest, AFileWithACopierOfItsOwnIsComparedAfterCopying)
{
    // As a database is copied while it is open: the copier writes the copy.
    int copies = 0;
    BackupSource own;
    own.file = DataFile::Tests;
    own.label = "History";
    own.path = paths.dataDir / "Tavrino_History.db";
    own.copy = [&](const std::filesystem::path &to) -> std::optional<std::string> {
        ++copies;
        if (writeFileAtomically(to, "copied " + readBytes(own.path)))
            return "failed";
        return std::nullopt;
    };
    backups.addSource(own);
    writeBytes(own.path, "answers");
    EXPECT_EQ(backups.backUp(DataFile::Tests).status, Status::Made);
    EXPECT_EQ(backups.backUp(DataFile::Tests).status, Status::Unchanged);
    EXPECT_EQ(copies, 2);
    ASSERT_EQ(backups.list().size(), 1u);
    EXPECT_EQ(readBytes(backups.list().front().path), "copied answers");
}

TEST(Backups, DatedCopiesWorkInAFolderNamedOutsideAscii)
{
    // "déjà 名": a name a narrow Windows path could not hold.
    const std::string folderName = "d\u00E9j\u00E0 \u540D";
    const ScratchDir dir;
    const DataPaths paths = DataPaths::in(dir.path() / std::filesystem::u8path(folderName));
    std::filesystem::create_directories(paths.dataDir);
    ManualClock clock{{2026, 3, 2, 8, 5, 9}};
    Backups backups{paths.backupsDir, clock};
    addDataFileSources(backups, paths);

    const TestBank bank = defaultTestBank();
    StudentRecords roster = sampleRoster(bank.subjectMax);
    ASSERT_FALSE(saveStudents(roster, paths.studentsPath));
    const std::string saved = readBytes(paths.studentsPath);
    ASSERT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    const std::vector<Backup> copies = backups.list();
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(copies.front().path.filename().u8string(),
              "Tavrino_Students 2026-03-02 08-05-09.dat");
    EXPECT_EQ(copies.front().bytes, saved.size());
    EXPECT_TRUE(backups.summarise(copies.front()).readable);
    StudentRecords fromCopy;
    ASSERT_EQ(readStudentsCopy(copies.front().path, bank, fromCopy).status,
              LoadResult::Status::Loaded);
    expectSameRecords(fromCopy, roster);

    // Restored over a changed file, byte for byte, with the changed file kept as a copy.
    roster.students.pop_back();
    ASSERT_FALSE(saveStudents(roster, paths.studentsPath));
    clock.advance(1000);
    ASSERT_FALSE(backups.restore(copies.front()));
    EXPECT_EQ(readBytes(paths.studentsPath), saved);
    EXPECT_EQ(backups.list().size(), 2u);

    // A failure names the folder in UTF-8.
    const InjectedSaveFault inject({SaveStep::Write, ENOSPC, 0});
    writeBytes(paths.studentsPath, "changed again");
    const BackupOutcome failed = backups.backUp(DataFile::Students);
    ASSERT_EQ(failed.status, Status::Failed);
    EXPECT_NE(failed.problem.find(folderName), std::string::npos) << failed.problem;
}

TEST_F(BackupsTest, CopiesCutShortByAnEndedProgramAreRemoved)
{
#ifdef _WIN32
    GTEST_SKIP() << "needs fork() for a process that has ended and a parent that still runs";
#else
    addDataFileSources(backups, paths);
    const pid_t ended = ::fork();
    ASSERT_GE(ended, 0);
    if (ended == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    std::filesystem::create_directories(paths.backupsDir);
    const std::string stale =
        "Tavrino_Students 2026-11-20 08-00-00.dat.tmp" + std::to_string(ended) + "-0";
    const std::string running =
        "Tavrino_Students 2026-11-20 08-00-01.dat.tmp" + std::to_string(::getppid()) + "-0";
    writeBytes(paths.backupsDir / stale, "half");
    writeBytes(paths.backupsDir / running, "half");

    writeBytes(paths.studentsPath, "results");
    ASSERT_EQ(backups.backUp(DataFile::Students).status, Status::Made);
    EXPECT_EQ(names(),
              (std::vector<std::string>{running, "Tavrino_Students 2026-11-24 10-15-03.dat"}));
#endif
}
