// The Students screen's Facts… and Who Needs Help…, and the class report's
// history pages: opened for the student selected, read from the session's
// history, and leaving the two data files exactly as they were.
#include "StudentsScreenFixture_test.h"

#include "ClassViewDialog.h"
#include "FactsDialog.h"
#include "core/History.h"
#include "reports/ClassReport.h"
#include "testsupport/HistoryRows.h"
#include "testsupport/TempDataDir.h"
#include "ui/ClassHistory.h"

#include <QListWidget>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>

class StudentsFluencyTest : public StudentsScreenTest {};

TEST_F(StudentsFluencyTest, FactsAndWhoNeedsHelpOpenFromTheScreenAndLeaveBothFilesAlone)
{
    writeRoster({"Ann", "Ben"});
    openHistory(session);
    auto screen = openScreen();
    recordArithmeticTest(*session.history, 1, 1, {true, false, true});
    const auto students = readFileBytes(session.paths.studentsPath);
    const auto tests = readFileBytes(session.paths.testsPath);

    for (const char *name : {"cmdFacts", "cmdClassView", "cmdProgress"}) {
        auto *button = child<QPushButton>(*screen, name);
        EXPECT_TRUE(button->text().contains(QLatin1Char('&'))) << name;
        EXPECT_FALSE(button->accessibleName().isEmpty()) << name;
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0) << name;
    }

    QStringList shown;
    int facts = -1;
    int rows = -1;
    screen->setFluencyShower([&](QDialog &dialog) {
        shown << dialog.windowTitle();
        if (auto *factsDialog = qobject_cast<FactsDialog *>(&dialog)) {
            facts = factsDialog->report().grids.empty() ? 0 : factsDialog->report().grids[0].facts;
        }
        if (auto *classView = qobject_cast<ClassViewDialog *>(&dialog))
            rows = classView->sorted()->rowCount();
    });
    child<QListWidget>(*screen, "List1")->setCurrentRow(1);
    child<QPushButton>(*screen, "cmdFacts")->click();
    child<QPushButton>(*screen, "cmdClassView")->click();
    EXPECT_EQ(shown, (QStringList{QStringLiteral("Facts: Ben"), QStringLiteral("Who Needs Help")}));
    EXPECT_GT(facts, 0);
    EXPECT_EQ(rows, 2); // Ann without tests, Ben's Arithmetic

    int previews = 0;
    std::vector<std::string> headings;
    screen->setReportPreviewer([&](QWidget *, const ClassReport &report) {
        ++previews;
        for (const ReportList &list : report.lists)
            headings.push_back(list.heading);
    });
    child<QPushButton>(*screen, "cmdReport")->click();
    EXPECT_EQ(previews, 1);
    EXPECT_EQ(headings, std::vector<std::string>{"Who needs help"});

    EXPECT_EQ(readFileBytes(session.paths.studentsPath), students);
    EXPECT_EQ(readFileBytes(session.paths.testsPath), tests);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(StudentsFluencyTest, WithoutAHistoryTheTeacherIsToldAndNothingOpens)
{
    writeRoster({"Ann"});
    auto screen = openScreen();
    int opened = 0;
    screen->setFluencyShower([&](QDialog &) { ++opened; });
    child<QPushButton>(*screen, "cmdFacts")->click();
    child<QPushButton>(*screen, "cmdClassView")->click();
    EXPECT_EQ(opened, 0);
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_EQ(prompt.shown()[0].kind, ScriptedPrompt::Shown::Kind::Stop);
}
