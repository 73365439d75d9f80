#include "core/HistoryFixture_test.h"
#include "core/NameMatching.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using HistoryIdentity = HistoryTest;

bool fileHolds(const std::filesystem::path &path, const std::string &text)
{
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return bytes.find(text) != std::string::npos;
}

} // namespace

TEST(NameMatching, SameNameThenLooseNameThenPosition)
{
    struct Case {
        const char *what;
        std::vector<KnownName> known;
        std::vector<std::string> names;
        std::vector<int> expected;
    };
    const std::vector<Case> cases = {
        {"unchanged", {{"Ann", 0}, {"Bob", 1}}, {"Ann", "Bob"}, {0, 1}},
        {"moved", {{"Ann", 0}, {"Bob", 1}}, {"Bob", "Ann"}, {1, 0}},
        {"blanks and case", {{"Ann", 0}, {"Bob", 1}}, {" bob", "ANN "}, {1, 0}},
        {"exact before loose", {{"ann", 0}, {"Ann", 1}}, {"Ann", "ANN"}, {1, 0}},
        {"renamed: position", {{"Ann", 0}, {"Bob", 1}}, {"Ann", "Robert"}, {0, 1}},
        {"repeated names pair in order", {{"Al", 0}, {"Al", 1}}, {"Al", "Al", "Al"}, {0, 1, -1}},
        {"repeated: same position first", {{"Al", 0}, {"Al", 2}}, {"Cy", "Dee", "Al"}, {0, -1, 1}},
        {"unplaced rows match by name only", {{"Eve", -1}, {"Ann", 0}}, {"Zed", "Eve"}, {1, 0}},
        {"a name used once", {{"Ann", 0}}, {"Bob", "Ann"}, {-1, 0}},
        {"nothing known", {}, {"Ann"}, {-1}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(matchNames(c.known, c.names), c.expected) << c.what;
}

TEST_F(HistoryIdentity, HistoryFollowsAStudentThroughRenamesAndOthersComingAndGoing)
{
    open({"Ann", "Bob", "Cy"});
    takeTest(1, 0, 2, {true});
    takeTest(2, 0, 2, {true, true});
    HistoryRoster &roster = history->roster();
    roster.studentDeleted(0);
    roster.studentAdded("Dee");
    roster.studentRenamed(0, "Robert");
    // Until the file is saved the roster in memory decides.
    EXPECT_EQ(history->queries().tests(0, 0, 2).size(), 1u);
    roster.rosterSaved({"Robert", "Cy", "Dee"});
    takeTest(2, 0, 2, {false});

    // As at the next start-up.
    open({"Robert", "Cy", "Dee"});
    HistoryQueries &queries = history->queries();
    EXPECT_EQ(queries.tests(0, 0, 2).at(0).score, 1);
    EXPECT_EQ(queries.tests(1, 0, 2).at(0).score, 2);
    EXPECT_EQ(queries.tests(2, 0, 2).at(0).score, -1);
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Robert", "Cy", "Dee"}));
    EXPECT_TRUE(history->roster().unmatchedStudents().empty());
}

TEST_F(HistoryIdentity, DeletingAStudentErasesOnlyThatHistoryOnceTheRosterIsSaved)
{
    open({"Annabel Quist", "Bob"});
    history->recorder().beginTest({0, 0, 4, 30, false});
    history->recorder().recordArithmetic({12, 12, 144, 2, 2, "one hundred and forty-four", false});
    history->recorder().endTest({-1, 0, 1, false});
    takeTest(1, 0, 4, {true});
    takeTest(1, 1, 4, {true});

    history->roster().studentDeleted(0);
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Annabel Quist", "Bob"}));
    history->roster().rosterSaved({"Bob"});
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Bob"}));
    EXPECT_EQ(history->queries().tests(0, 0, 4).size(), 1u);
    EXPECT_EQ(history->queries().facts(0).size(), 1u);
    EXPECT_TRUE(history->roster().unmatchedStudents().empty());
    // Nothing of hers is left in the file, nor in its log.
    for (const char *suffix : {"", "-wal"}) {
        const auto path = std::filesystem::path(file().string() + suffix);
        EXPECT_FALSE(fileHolds(path, "Annabel Quist")) << path;
        EXPECT_FALSE(fileHolds(path, "forty-four")) << path;
    }
}

TEST_F(HistoryIdentity, SubjectsKeepTheirHistoryThroughRenamesDeletesAndRevert)
{
    std::vector<std::string> subjects = BuiltInSubjects;
    subjects.insert(subjects.end(), {"Zoology", "Art"});
    open({"Ann"}, subjects);
    takeTest(0, 6, 1, {true});
    takeTest(0, 7, 1, {true, true});

    HistorySubjects &bank = history->subjects();
    bank.subjectDeleted(6);
    EXPECT_EQ(history->queries().tests(0, 6, 1).at(0).score, 2);
    bank.subjectRenamed(6, "Drawing");
    bank.subjectAdded("Zoology");
    EXPECT_TRUE(history->queries().tests(0, 7, 1).empty());
    takeTest(0, 7, 1, {false});

    // A restart with the bank as the Tests screen saved it.
    open({"Ann"}, {BuiltInSubjects[0], BuiltInSubjects[1], BuiltInSubjects[2], BuiltInSubjects[3],
                   BuiltInSubjects[4], BuiltInSubjects[5], "Drawing", "Zoology"});
    EXPECT_EQ(history->queries().tests(0, 6, 1).at(0).score, 2);
    EXPECT_EQ(history->queries().tests(0, 7, 1).at(0).score, -1);
    history->subjects().subjectsReverted();
    EXPECT_TRUE(history->queries().tests(0, 6, 1).empty());
    // The history of deleted subjects stays, under their last names.
    std::vector<std::string> subjectsInCsv;
    for (const std::string &row : csvRows())
        subjectsInCsv.push_back(csvField(row, 2));
    EXPECT_EQ(subjectsInCsv,
              (std::vector<std::string>{"Zoology", "Drawing", "Drawing", "Zoology"}));
}

TEST_F(HistoryIdentity, ARosterChangedOutsideIsMatchedByNameThenPosition)
{
    open({"Ann", "Bob", "Cy", "Dee", "Eve"});
    for (int student = 0; student < 5; ++student)
        takeTest(student, 0, 0, std::vector<bool>(std::size_t(student + 1), true));

    // A Students file from another computer: Bob moved, Ann typed differently,
    // Cy renamed in place, Dee and Eve gone.
    open({"Bob", " ann", "Cyrus"});
    HistoryQueries &queries = history->queries();
    EXPECT_EQ(queries.tests(0, 0, 0).at(0).score, 2);
    EXPECT_EQ(queries.tests(1, 0, 0).at(0).score, 1);
    EXPECT_EQ(queries.tests(2, 0, 0).at(0).score, 3);

    std::vector<UnmatchedStudent> unmatched = history->roster().unmatchedStudents();
    ASSERT_EQ(unmatched.size(), 2u);
    EXPECT_EQ(std::tie(unmatched[0].name, unmatched[0].tests), std::make_tuple("Dee", 1));
    EXPECT_EQ(unmatched[1].name, "Eve");
    EXPECT_EQ(isoLocalTime(unmatched[1].lastTest), isoLocalTime(unmatched[1].firstTest));

    history->roster().giveUnmatched(unmatched[0].key, 0);
    history->roster().deleteUnmatched(unmatched[1].key);
    EXPECT_TRUE(history->roster().unmatchedStudents().empty());
    const std::vector<TestSummary> bobs = queries.tests(0, 0, 0);
    ASSERT_EQ(bobs.size(), 2u);
    EXPECT_EQ(std::tie(bobs[0].score, bobs[1].score), std::make_tuple(2, 4));
    const std::vector<std::string> names = takers(csvRows());
    EXPECT_EQ(std::count(names.begin(), names.end(), "Bob"), 2);
    EXPECT_EQ(std::count(names.begin(), names.end(), "Eve"), 0);
    // Bob's facts now hold Dee's answers too: 0 x 3 to 3 x 3 answered by both.
    const std::vector<ArithmeticFact> facts = queries.facts(0);
    ASSERT_EQ(facts.size(), 4u);
    EXPECT_EQ(facts[0].recent.size(), 2u);
    EXPECT_EQ(facts[3].recent.size(), 1u);

    // A history that matches nobody stays matched to nobody at the next start-up.
    open({"Bob", " ann", "Cyrus"});
    EXPECT_EQ(history->queries().tests(0, 0, 0).size(), 2u);
}
