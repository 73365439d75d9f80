#include "core/Students.h"

#include <gtest/gtest.h>

namespace {

// Two students whose results tell every subject apart: last[0] = 10 * (subject + 1)
// plus the student's index, high[12] = -(subject + 1).
StudentRecords markedRecords(int32_t subjectMax)
{
    StudentRecords records;
    for (int i = 0; i < 2; ++i) {
        records.students.push_back(newStudent(subjectMax));
        for (int32_t s = 0; s <= subjectMax; ++s) {
            records.students[i].results[s].last[0] = static_cast<int16_t>(10 * (s + 1) + i);
            records.students[i].results[s].high[12] = static_cast<int16_t>(-(s + 1));
        }
    }
    return records;
}

// last[0] of every entry of the student's record as the file holds it: the
// results, then the kept extra results.
std::vector<int> recordMarks(const Student &student)
{
    std::vector<int> marks;
    for (const auto *table : {&student.results, &student.extraResults}) {
        for (const SubjectResults &results : *table) {
            marks.push_back(results.last[0]);
        }
    }
    return marks;
}

} // namespace

TEST(Students, KeptExtraResultsStayAtTheirIndexesWhenTheSubjectsChange)
{
    // A record of 19 subjects read with a bank of 6: entries 6..18 are kept aside.
    StudentRecords records = markedRecords(18);
    for (Student &student : records.students) {
        student.extraResults.assign(student.results.begin() + 6, student.results.end());
        student.results.resize(6);
    }
    const auto marks = [&](std::vector<int> zeroed) {
        std::vector<int> expected = recordMarks(markedRecords(18).students[1]);
        for (const int index : zeroed) {
            expected[index] = 0;
        }
        return expected;
    };

    // An added subject starts from zero at index 6; 7..18 stay where they were.
    addSubjectResults(records, 6);
    EXPECT_EQ(records.students[1].results.size(), 7u);
    EXPECT_EQ(recordMarks(records.students[1]), marks({6}));
    addSubjectResults(records, 7);
    EXPECT_EQ(recordMarks(records.students[1]), marks({6, 7}));
    // Deleting subject 6 moves 7 down; index 7, given up, holds zeros so that 8..18 stay.
    records.students[1].results[7].last[0] = 77;
    deleteSubjectResults(records, 6);
    EXPECT_EQ(records.students[1].results.size(), 7u);
    std::vector<int> expected = marks({7});
    expected[6] = 77;
    EXPECT_EQ(recordMarks(records.students[1]), expected);
    // Restoring the defaults drops the added subject's results, not the kept ones.
    resizeResults(records, 5);
    EXPECT_EQ(records.students[1].results.size(), 6u);
    EXPECT_EQ(recordMarks(records.students[1]), marks({6, 7}));
    EXPECT_EQ(recordMarks(records.students[0]).size(), 19u);

    // A reset clears what the screens do not show as well.
    clearResults(records.students[0]);
    EXPECT_EQ(recordMarks(records.students[0]), std::vector<int>(19, 0));
    EXPECT_EQ(records.students[0].extraResults[12].high, SubjectResults{}.high);
}

TEST(Students, NewStudentsAndTheirResultsFollowTheSubjects)
{
    // A new student's empty name, level K and zeroed results are pinned by the
    // first-run file; it is not made current.
    EXPECT_FALSE(newStudent(5).current);
    EXPECT_EQ(trimName("  Ann \t"), "Ann");
    EXPECT_EQ(trimName("Mary Lou"), "Mary Lou");
    EXPECT_EQ(trimName("   "), "");

    StudentRecords records = markedRecords(5);
    addSubjectResults(records, 6);
    for (const Student &added : records.students) {
        ASSERT_EQ(added.results.size(), 7u);
        EXPECT_EQ(added.results[5].last[0] / 10, 6);
        EXPECT_EQ(added.results[6].last[0], 0);
        EXPECT_EQ(added.results[6].high[12], 0);
    }
    // Deleting subject 0 moves Spelling's results (index 1) to index 0.
    deleteSubjectResults(records, 0);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(records.students[i].results.size(), 6u);
        EXPECT_EQ(records.students[i].results[0].last[0], 20 + i);
        EXPECT_EQ(records.students[i].results[0].high[12], -2);
        EXPECT_EQ(records.students[i].results[4].last[0], 60 + i);
        EXPECT_EQ(records.students[i].results[5].last[0], 0);
    }
    // Deleting the last subject only drops its results.
    deleteSubjectResults(records, 5);
    ASSERT_EQ(records.students[1].results.size(), 5u);
    EXPECT_EQ(records.students[1].results[4].last[0], 61);
    // Restoring the defaults keeps the leading subjects and drops the rest.
    records = markedRecords(8);
    resizeResults(records, 5);
    ASSERT_EQ(records.students[0].results.size(), 6u);
    EXPECT_EQ(records.students[0].results[5].last[0], 60);
}

TEST(Students, ScoreSetsLastAlwaysAndHighOnlyWhenStrictlyGreater)
{
    StudentRecords records = markedRecords(5);
    records.currentStudent = 1;
    records.currentSubject = 2;
    records.currentLevel = 4;
    const SubjectResults &results = records.students[1].results[2];

    // A zero on a fresh level equals the stored zero: no new high.
    EXPECT_FALSE(recordScore(records, 0));
    EXPECT_FALSE(recordScore(records, -3));
    EXPECT_EQ(results.last[4], -3);
    EXPECT_EQ(results.high[4], 0);
    EXPECT_TRUE(recordScore(records, 7));
    EXPECT_EQ(results.high[4], 7);
    EXPECT_FALSE(recordScore(records, 7));
    EXPECT_FALSE(recordScore(records, 2));
    EXPECT_EQ(results.last[4], 2);
    EXPECT_EQ(results.high[4], 7);

    // Nothing else moved.
    EXPECT_EQ(records.students[0].results[2].last[4], 0);
    EXPECT_EQ(records.students[1].results[2].last[3], 0);
    EXPECT_EQ(records.students[1].results[1].high[4], 0);

    // Scores beyond 16 bits are clamped, not wrapped.
    EXPECT_TRUE(recordScore(records, 100000));
    EXPECT_EQ(results.high[4], 32767);
    recordScore(records, -100000);
    EXPECT_EQ(results.last[4], -32768);
    EXPECT_EQ(clampScore(-32768), -32768);
    EXPECT_EQ(clampScore(32768), 32767);

    // No such student, subject or level: nothing is recorded.
    const StudentRecords before = records;
    const int32_t outside[][3] = {{2, 2, 4}, {0, 6, 4}, {0, 0, 13}}; // student, subject, level
    for (const auto &current : outside) {
        records.currentStudent = current[0];
        records.currentSubject = current[1];
        records.currentLevel = current[2];
        EXPECT_FALSE(recordScore(records, 50));
    }
    for (std::size_t i = 0; i < 2; ++i) {
        for (std::size_t s = 0; s < 6; ++s) {
            EXPECT_EQ(records.students[i].results[s].last, before.students[i].results[s].last);
            EXPECT_EQ(records.students[i].results[s].high, before.students[i].results[s].high);
        }
    }
}
