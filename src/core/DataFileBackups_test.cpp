// What a copy of each data file is listed as, and how a restored copy takes
// the place of the bank or the roster in memory without losing a result.
#include "core/DataFileBackups.h"

#include "core/CoreFixtures_test.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// last[0] of every entry a student's record holds, results and kept extras alike.
std::vector<int> recordMarks(const Student &student)
{
    std::vector<int> marks;
    for (const auto *table : {&student.results, &student.extraResults})
        for (const SubjectResults &results : *table)
            marks.push_back(results.last[0]);
    return marks;
}

StudentRecords markedRoster(int32_t subjectMax, int students)
{
    StudentRecords records;
    for (int i = 0; i < students; ++i) {
        Student &student = records.students.emplace_back(newStudent(subjectMax));
        student.name = "Student " + std::to_string(i);
        for (int32_t s = 0; s <= subjectMax; ++s)
            student.results[s].last[0] = static_cast<int16_t>(100 * i + s + 1);
    }
    return records;
}

} // namespace

TEST(DataFileBackups, ACopySaysWhatItHoldsOrThatItIsDamaged)
{
    const ScratchDir dir;
    // 3 questions in Spelling at K, 1 in Geography at level 5, and the one empty
    // question an added subject starts with; Arithmetic's are made, not counted.
    TestBank bank = defaultTestBank();
    for (SubjectLimits &limits : bank.limits)
        limits.lastQuestion.fill(-1);
    bank.limits[ArithmeticSubject].lastQuestion.fill(5);
    bank.limits[1].lastQuestion[0] = 2;
    bank.limits[2].lastQuestion[5] = 0;
    addSubject(bank, "Birds");
    ASSERT_FALSE(saveTests(bank, dir / "tests.dat"));

    // One record saved with two more subjects than the others: the widest counts.
    StudentRecords roster = markedRoster(5, 4);
    roster.students[2].extraResults.resize(2);
    ASSERT_FALSE(saveStudents(roster, dir / "students.dat"));
    StudentRecords single = markedRoster(0, 1);
    ASSERT_FALSE(saveStudents(single, dir / "single.dat"));

    const struct {
        BackupSummary (*summarise)(const std::filesystem::path &);
        const char *file;
        const char *text;
    } readable[] = {
        {summariseTestsCopy, "tests.dat", "7 subjects, 5 questions"},
        {summariseStudentsCopy, "students.dat", "4 students, 8 subjects"},
        {summariseStudentsCopy, "single.dat", "1 student, 1 subject"},
    };
    for (const auto &each : readable) {
        const BackupSummary summary = each.summarise(dir / each.file);
        EXPECT_TRUE(summary.readable) << each.file;
        EXPECT_EQ(summary.text, each.text);
    }

    // Cut short, each is damaged; a copy gone missing is not a first run that
    // makes a new file in its place.
    writeBytes(dir / "short tests.dat", readBytes(dir / "tests.dat").substr(0, 200));
    writeBytes(dir / "short students.dat", readBytes(dir / "students.dat").substr(0, 200));
    for (const auto &[summarise, file] : {std::pair{summariseTestsCopy, "short tests.dat"},
                                          std::pair{summariseStudentsCopy, "short students.dat"},
                                          std::pair{summariseTestsCopy, "gone.dat"},
                                          std::pair{summariseStudentsCopy, "gone.dat"}}) {
        const BackupSummary summary = summarise(dir / file);
        EXPECT_FALSE(summary.readable) << file;
        EXPECT_NE(summary.text.find(file), std::string::npos) << summary.text;
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "gone.dat"));
}

TEST(DataFileBackups, ARestoredBankSplitsTheResultsAsLoadingWouldAndLosesNone)
{
    TestBank bank = defaultTestBank();
    addSubject(bank, "Birds");
    addSubject(bank, "Trees");
    StudentRecords records = markedRoster(bank.subjectMax, 2);
    records.currentSubject = 7;
    const std::vector<int> marks = recordMarks(records.students[1]);

    // Back to the six built-in subjects: the results of the added ones are kept aside.
    adoptBank(bank, defaultTestBank(), records);
    EXPECT_EQ(bank.subjectMax, 5);
    EXPECT_EQ(records.students[1].results.size(), 6u);
    EXPECT_EQ(recordMarks(records.students[1]), marks);
    EXPECT_EQ(records.currentSubject, ArithmeticSubject);
    EXPECT_EQ(records.currentSubjectName, "Arithmetic");

    // A bank of nine: the kept results are results again, the ninth starts at zero.
    TestBank nine = defaultTestBank();
    for (const char *name : {"Birds", "Trees", "Rivers"})
        addSubject(nine, name);
    records.currentSubject = 2;
    adoptBank(bank, nine, records);
    std::vector<int> widened = marks;
    widened.push_back(0);
    EXPECT_EQ(records.students[1].results.size(), 9u);
    EXPECT_TRUE(records.students[1].extraResults.empty());
    EXPECT_EQ(recordMarks(records.students[1]), widened);
    EXPECT_EQ(records.currentSubjectName, "Geography");
}

TEST(DataFileBackups, ARestoredRosterKeepsTheCurrentStudentWithinIt)
{
    StudentRecords restored = markedRoster(5, 3);
    restored.students[1].current = true;
    const struct {
        int32_t current;
        int32_t expected;
    } cases[] = {{2, 2}, {4, 1}, {-1, 1}};
    for (const auto &each : cases) {
        StudentRecords records = markedRoster(5, 5);
        records.currentStudent = each.current;
        records.currentSubject = 3;
        records.currentLevel = 7;
        adoptRoster(records, restored);
        EXPECT_EQ(records.students.size(), 3u);
        EXPECT_EQ(records.currentStudent, each.expected);
        EXPECT_EQ(records.currentStudentName, "Student " + std::to_string(each.expected));
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(records.students[i].current, i == each.expected) << i;
        EXPECT_EQ(records.currentSubject, 3);
        EXPECT_EQ(records.currentLevel, 7);
    }
}
