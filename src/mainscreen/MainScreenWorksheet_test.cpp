// Worksheet… on the main screen: between tests only, for the subject and level
// on the screen, from the keyboard, with the dialog and the preview replaced by
// steps that record what they were given.
#include "MainScreenFixture_test.h"

#include "testsupport/ScreenAccess.h"
#include "worksheets/Worksheet.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

TEST_F(MainScreenTest, AWorksheetOfTheSubjectAndLevelShownGoesToThePreview)
{
    saveTestsWith([](TestBank &bank) { bank.limits[SpellingSubject].lastQuestion[7] = -1; });
    startUp();
    std::vector<std::pair<int, int>> asked;
    std::optional<WorksheetSettings> answer; // Cancel
    std::vector<Worksheet> previewed;
    screen->setWorksheetSteps(
        {[&](QWidget *, const TestBank &, int subject, int level) {
             asked.emplace_back(subject, level);
             return answer;
         },
         [&](QWidget *, const Worksheet &sheet) { previewed.push_back(sheet); }});
    EXPECT_EQ(spokenName(*button("cmdWorksheet")), "Print a worksheet");
    const std::vector<std::string> stops = tabStops(*screen);
    const auto worksheet = std::find(stops.begin(), stops.end(), "cmdWorksheet");
    ASSERT_NE(worksheet, stops.end());
    EXPECT_EQ(*(worksheet - 1), "cmdTest");

    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    chooseLevel(4);
    button("cmdWorksheet")->click();
    EXPECT_EQ(asked, (std::vector<std::pair<int, int>>{{SpellingSubject, 4}}));
    EXPECT_TRUE(previewed.empty()) << "cancelled";

    // Alt+W, as a mnemonic clicks its button a moment later.
    answer = WorksheetSettings{40, false, 5};
    QTest::keyClick(screen->focusWidget(), Qt::Key_W, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !previewed.empty(); }));
    const Worksheet &sheet = previewed.front();
    EXPECT_EQ(std::make_pair(sheet.subject, sheet.level), std::make_pair(SpellingSubject, 4));
    EXPECT_EQ(sheet.subjectName, "Spelling");
    EXPECT_EQ(sheet.count(), 40);
    EXPECT_FALSE(sheet.answerKey);
    EXPECT_EQ(sheet.seed, 5u);
    EXPECT_TRUE(prompt.shown().empty());

    // Not while a test runs: the button goes with the others.
    button("cmdStartTest")->click();
    EXPECT_FALSE(shown("cmdWorksheet"));
    screen->stopTest();
    EXPECT_TRUE(shown("cmdWorksheet"));

    // A student's level at which the subject has no questions: nothing to draw.
    session.records.currentLevel = 7;
    button("cmdWorksheet")->click();
    EXPECT_EQ(asked.size(), 2u);
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_TRUE(prompt.last()->text.contains(QStringLiteral("Level 7"))) << prompt.last()->text;
}
