#include "core/Students.h"

#include <gtest/gtest.h>

namespace {

// Two students whose results tell every subject apart: Last[0] = 10 * (subject + 1)
// plus the student's index, High[12] = -(subject + 1).
StudentRecords MarkedRecords(int32_t subjectMax)
{
    StudentRecords records;
    for (int i = 0; i < 2; ++i) {
        records.Students.push_back(NewStudent(subjectMax));
        for (int32_t s = 0; s <= subjectMax; ++s) {
            records.Students[i].Results[s].Last[0] = static_cast<int16_t>(10 * (s + 1) + i);
            records.Students[i].Results[s].High[12] = static_cast<int16_t>(-(s + 1));
        }
    }
    return records;
}

} // namespace

TEST(Students, NewStudentsAndTheirResultsFollowTheSubjects)
{
    const Student student = NewStudent(5);
    EXPECT_EQ(student.Name, "");
    EXPECT_EQ(student.Level, 0);
    EXPECT_FALSE(student.Current);
    ASSERT_EQ(student.Results.size(), 6u);
    EXPECT_EQ(student.Results[5].Last, (std::array<int16_t, LevelCount>{}));
    EXPECT_EQ(student.Results[5].High, (std::array<int16_t, LevelCount>{}));
    EXPECT_EQ(TrimName("  Ann \t"), "Ann");
    EXPECT_EQ(TrimName("Mary Lou"), "Mary Lou");
    EXPECT_EQ(TrimName("   "), "");

    StudentRecords records = MarkedRecords(5);
    AddSubjectResults(records, 6);
    for (const Student &added : records.Students) {
        ASSERT_EQ(added.Results.size(), 7u);
        EXPECT_EQ(added.Results[5].Last[0] / 10, 6);
        EXPECT_EQ(added.Results[6].Last[0], 0);
        EXPECT_EQ(added.Results[6].High[12], 0);
    }
    // Deleting subject 0 moves Spelling's results (index 1) to index 0.
    DeleteSubjectResults(records, 0);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(records.Students[i].Results.size(), 6u);
        EXPECT_EQ(records.Students[i].Results[0].Last[0], 20 + i);
        EXPECT_EQ(records.Students[i].Results[0].High[12], -2);
        EXPECT_EQ(records.Students[i].Results[4].Last[0], 60 + i);
        EXPECT_EQ(records.Students[i].Results[5].Last[0], 0);
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
    EXPECT_EQ(results.High[4], 7);
    EXPECT_FALSE(RecordScore(records, 7));
    EXPECT_FALSE(RecordScore(records, 2));
    EXPECT_EQ(results.Last[4], 2);
    EXPECT_EQ(results.High[4], 7);

    // Nothing else moved.
    EXPECT_EQ(records.Students[0].Results[2].Last[4], 0);
    EXPECT_EQ(records.Students[1].Results[2].Last[3], 0);
    EXPECT_EQ(records.Students[1].Results[1].High[4], 0);

    // Scores beyond 16 bits are clamped, not wrapped.
    EXPECT_TRUE(RecordScore(records, 100000));
    EXPECT_EQ(results.High[4], 32767);
    RecordScore(records, -100000);
    EXPECT_EQ(results.Last[4], -32768);
    EXPECT_EQ(ClampScore(-32768), -32768);
    EXPECT_EQ(ClampScore(32768), 32767);

    // No such student, subject or level: nothing is recorded.
    const StudentRecords before = records;
    const int32_t outside[][3] = {{2, 2, 4}, {0, 6, 4}, {0, 0, 13}}; // student, subject, level
    for (const auto &current : outside) {
        records.CurrentStudent = current[0];
        records.CurrentSubject = current[1];
        records.CurrentLevel = current[2];
        EXPECT_FALSE(RecordScore(records, 50));
    }
    for (std::size_t i = 0; i < 2; ++i) {
        for (std::size_t s = 0; s < 6; ++s) {
            EXPECT_EQ(records.Students[i].Results[s].Last, before.Students[i].Results[s].Last);
            EXPECT_EQ(records.Students[i].Results[s].High, before.Students[i].Results[s].High);
        }
    }
}
