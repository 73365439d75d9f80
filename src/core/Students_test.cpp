#include "core/Students.h"

#include <gtest/gtest.h>

namespace {

// Two students whose results tell every subject apart: Last[0] = 10 * (subject + 1).
StudentRecords MarkedRecords(int32_t subjectMax)
{
    StudentRecords records;
    for (int i = 0; i < 2; ++i) {
        Student student = NewStudent(subjectMax);
        for (int32_t s = 0; s <= subjectMax; ++s) {
            student.Results[s].Last[0] = static_cast<int16_t>(10 * (s + 1) + i);
            student.Results[s].High[12] = static_cast<int16_t>(-(s + 1));
        }
        records.Students.push_back(student);
    }
    return records;
}

} // namespace

TEST(Students, NewStudentIsNamelessAtLevelKWithZeroedResults)
{
    const Student student = NewStudent(5);
    EXPECT_EQ(student.Name, "");
    EXPECT_EQ(student.Level, 0);
    EXPECT_FALSE(student.Current);
    ASSERT_EQ(student.Results.size(), 6u);
    for (const SubjectResults &results : student.Results) {
        for (int level = 0; level < LevelCount; ++level) {
            EXPECT_EQ(results.Last[level], 0);
            EXPECT_EQ(results.High[level], 0);
        }
    }
    EXPECT_EQ(TrimName("  Ann \t"), "Ann");
    EXPECT_EQ(TrimName("Mary Lou"), "Mary Lou");
    EXPECT_EQ(TrimName("   "), "");
}

TEST(Students, ResultsFollowTheSubjectsWhenTheyAreAddedDeletedOrRestored)
{
    StudentRecords records = MarkedRecords(5);

    AddSubjectResults(records, 6);
    for (const Student &student : records.Students) {
        ASSERT_EQ(student.Results.size(), 7u);
        EXPECT_EQ(student.Results[5].Last[0] / 10, 6);
        EXPECT_EQ(student.Results[6].Last[0], 0);
        EXPECT_EQ(student.Results[6].High[12], 0);
    }

    // Deleting subject 0 moves Spelling's results (index 1) to index 0.
    DeleteSubjectResults(records, 0);
    for (int i = 0; i < 2; ++i) {
        const Student &student = records.Students[i];
        ASSERT_EQ(student.Results.size(), 6u);
        EXPECT_EQ(student.Results[0].Last[0], 20 + i);
        EXPECT_EQ(student.Results[0].High[12], -2);
        EXPECT_EQ(student.Results[4].Last[0], 60 + i);
        EXPECT_EQ(student.Results[5].Last[0], 0);
    }

    // Deleting the last subject only drops its results.
    DeleteSubjectResults(records, 5);
    ASSERT_EQ(records.Students[1].Results.size(), 5u);
    EXPECT_EQ(records.Students[1].Results[4].Last[0], 61);

    // Restoring the defaults keeps the leading subjects and drops the rest.
    records = MarkedRecords(8);
    ResizeResults(records, 5);
    ASSERT_EQ(records.Students[0].Results.size(), 6u);
    EXPECT_EQ(records.Students[0].Results[5].Last[0], 60);
}

TEST(Students, ScoreSetsLastAlwaysAndHighOnlyWhenStrictlyGreater)
{
    StudentRecords records = MarkedRecords(5);
    records.CurrentStudent = 1;
    records.CurrentSubject = 2;
    records.CurrentLevel = 4;
    const SubjectResults &results = records.Students[1].Results[2];

    // A zero on a fresh level equals the stored zero: no new high.
    EXPECT_FALSE(RecordScore(records, 0));
    EXPECT_FALSE(RecordScore(records, -3));
    EXPECT_EQ(results.Last[4], -3);
    EXPECT_EQ(results.High[4], 0);

    EXPECT_TRUE(RecordScore(records, 7));
    EXPECT_EQ(results.Last[4], 7);
    EXPECT_EQ(results.High[4], 7);
    EXPECT_FALSE(RecordScore(records, 7));
    EXPECT_FALSE(RecordScore(records, 2));
    EXPECT_EQ(results.Last[4], 2);
    EXPECT_EQ(results.High[4], 7);

    // Nothing else moved.
    EXPECT_EQ(records.Students[0].Results[2].Last[4], 0);
    EXPECT_EQ(records.Students[1].Results[2].Last[3], 0);
    EXPECT_EQ(records.Students[1].Results[1].High[4], 0);

    EXPECT_TRUE(RecordScore(records, 100000));
    EXPECT_EQ(results.High[4], 32767);
    RecordScore(records, -100000);
    EXPECT_EQ(results.Last[4], -32768);
    EXPECT_EQ(ClampScore(-32768), -32768);
    EXPECT_EQ(ClampScore(32768), 32767);

    records.CurrentStudent = 2;
    EXPECT_FALSE(RecordScore(records, 50));
    records.CurrentStudent = 0;
    records.CurrentSubject = 6;
    EXPECT_FALSE(RecordScore(records, 50));
    records.CurrentSubject = 0;
    records.CurrentLevel = 13;
    EXPECT_FALSE(RecordScore(records, 50));
}
