// Pasted names against the roster: cleaning as the name box does, names passed
// over and why, the live line's words, and the students made from the names.
#include "NewNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

std::vector<Student> roster(const Names &names)
{
    std::vector<Student> students;
    for (const std::string &name : names) {
        students.emplace_back(newStudent(5)).name = name;
    }
    return students;
}

} // namespace

TEST(NewNames, LinesAreCleanedAsTheNameBoxCleansThem)
{
    EXPECT_EQ(cleanName(" \tAnn Lee \t"), "Ann Lee");
    EXPECT_EQ(cleanName("\u00A0Zo\u00EB\u00A0"), "\u00A0Zo\u00EB\u00A0") << "no-break spaces stay";
    EXPECT_EQ(cleanName("Ch\u00E2u \U0001F600 \u4E2D"), "Ch\u00E2u ? ?");
    // Cut to the box's 65,535 units before the blanks go; an emoji takes two units.
    const std::string longName = " " + std::string(MaxNameLength, 'a');
    EXPECT_EQ(cleanName(longName), std::string(MaxNameLength - 1, 'a'));
    EXPECT_EQ(cleanName(std::string(MaxNameLength - 1, 'b') + "\U0001F600"),
              std::string(MaxNameLength - 1, 'b') + "?");
}

TEST(NewNames, KnownAndRepeatedNamesAreAddedOnceUnlessAskedFor)
{
    const NewNamesPlanner planner(roster({"Ann Lee", "  Zo\u00EB ", "\u0160imon"}));
    const std::string text = "\n ann lee\r\nBob\n\nZO\u00CB\n\u0161IMON\u2028bob \n"
                             "Cy \U0001F600\nCy \u4E2D\n\n  \n";
    const NewNames skipped = planner.plan(text, false);
    EXPECT_EQ(skipped.names, (Names{"Bob", "Cy ?"}));
    EXPECT_EQ(skipped.onRoster, 3);
    EXPECT_EQ(skipped.repeats, 2) << "bob, and Cy once both become \"Cy ?\"";
    EXPECT_EQ(skipped.blankLines, 2) << "blank lines after the last name are not counted";
    EXPECT_EQ(skipped.replacedLines, (std::vector<int>{8, 9}));
    EXPECT_EQ(summaryOf(skipped, false),
              "2 students will be added; 3 already on the roster are skipped; 2 repeats in the "
              "list are skipped; 2 blank lines ignored");
    EXPECT_EQ(replacedWarningOf(skipped),
              "Lines 8 and 9 have characters the Students file cannot hold; each becomes \"?\".");

    const NewNames all = planner.plan(text, true);
    EXPECT_EQ(all.names,
              (Names{"ann lee", "Bob", "ZO\u00CB", "\u0161IMON", "bob", "Cy ?", "Cy ?"}));
    EXPECT_EQ(summaryOf(all, true), "7 students will be added, including 3 already on the roster "
                                    "and 2 repeats in the list; 2 blank lines ignored");
}

TEST(NewNames, TheLiveLineCountsInWords)
{
    const NewNamesPlanner planner(roster({"Ann"}));
    const std::vector<std::pair<std::string, std::string>> lines = {
        {"", "No students will be added"},
        {"Ann\n", "No students will be added; 1 already on the roster is skipped"},
        {"Ben\n\nBen", "1 student will be added; 1 repeat in the list is skipped; 1 blank line "
                       "ignored"},
        {"Ann\nBen\nAnn", "1 student will be added; 2 already on the roster are skipped"},
    };
    for (const auto &[text, summary] : lines) {
        EXPECT_EQ(summaryOf(planner.plan(text, false), false), summary) << text;
    }
    EXPECT_EQ(summaryOf(planner.plan("Ann\nBen", true), true),
              "2 students will be added, including 1 already on the roster");

    EXPECT_EQ(replacedWarningOf(planner.plan("Ann\nBen", false)), "");
    EXPECT_EQ(replacedWarningOf(planner.plan("Ann\n\u4E2D", false)),
              "Line 2 has a character the Students file cannot hold; it becomes \"?\".");
    std::string many;
    for (int i = 1; i <= 8; ++i)
        many += "\u4E2D" + std::to_string(i) + "\n";
    EXPECT_EQ(replacedWarningOf(planner.plan(many, false)),
              "Lines 1, 2, 3, 4, 5 and 3 more have characters the Students file cannot hold; "
              "each becomes \"?\".");
}

TEST(NewNames, StudentsAreMadeAsAddStudentMakesThemAndTheFirstRunsNamelessOneIsUsed)
{
    StudentRecords records;
    records.students = roster({"Ann"});
    records.students[0].current = true;
    EXPECT_EQ(addNewStudents(records, {"Bob", "Cy"}, 4, 5), 1u);
    ASSERT_EQ(records.students.size(), 3u);
    for (std::size_t i = 1; i < 3; ++i) {
        const Student &student = records.students[i];
        EXPECT_EQ(student.name, i == 1 ? "Bob" : "Cy");
        EXPECT_EQ(student.level, 4);
        EXPECT_FALSE(student.current);
        ASSERT_EQ(student.results.size(), 6u);
        EXPECT_EQ(student.results[5].high, SubjectResults{}.high);
    }
    EXPECT_EQ(addNewStudents(records, {}, 4, 5), 3u);
    EXPECT_EQ(records.students.size(), 3u);

    // A first run leaves one nameless student: the first name takes its place.
    StudentRecords firstRun;
    firstRun.students = roster({" "});
    firstRun.students[0].current = true;
    EXPECT_EQ(addNewStudents(firstRun, {"Ann", "Bob"}, 2, 5), 0u);
    ASSERT_EQ(firstRun.students.size(), 2u);
    EXPECT_EQ(firstRun.students[0].name, "Ann");
    EXPECT_EQ(firstRun.students[0].level, 2);
    EXPECT_TRUE(firstRun.students[0].current);
    EXPECT_EQ(firstRun.students[1].name, "Bob");

    // One that has taken a test keeps its scores and stays; the class follows it.
    StudentRecords used;
    used.students = roster({""});
    used.students[0].results[3].last[1] = 7;
    EXPECT_EQ(addNewStudents(used, {"Ann"}, 0, 5), 1u);
    EXPECT_EQ(used.students[0].name, "");
    EXPECT_EQ(used.students[1].name, "Ann");
}
