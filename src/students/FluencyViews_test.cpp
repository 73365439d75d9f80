#include "ClassViewDialog.h"
#include "FactGridModel.h"
#include "FactsDialog.h"
#include "NeedsHelpModel.h"
#include "core/DefaultBank.h"
#include "core/HistoryFixture_test.h"
#include "reports/ClassHistoryLists.h"
#include "reports/ClassReportPainter.h"
#include "reports/MasteryLook.h"
#include "testsupport/ScriptedPrompt.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QPdfWriter>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>

#include <gtest/gtest.h>

namespace {

class FluencyViewsTest : public HistoryTest {
protected:
    FluencyViewsTest() { buildDefaultTests(bank); }

    // Ann answers 7 x 8 four times right and once wrong, 2 s each, at level 4.
    void answerSevenEights()
    {
        HistoryRecorder &recorder = history->recorder();
        recorder.beginTest({0, ArithmeticSubject, 4, 60, false});
        for (int i = 0; i < 5; ++i) {
            clock.advance(2000);
            recorder.recordArithmetic({7, 8, 56, 2, i % 3, i == 2 ? "5" : "x", i != 2});
        }
        recorder.endTest({3, 4, 1, false});
    }

    TestBank bank;
    ScriptedPrompt prompt;
};

TEST_F(FluencyViewsTest, FactsViewShowsEachFactInColourMarkAndWords)
{
    open();
    answerSevenEights();
    takeTest(0, SpellingSubject, 3, {false, false, true});
    FactsDialog dialog(history->queries(), bank, 0, QStringLiteral("Ann"), prompt);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Facts: Ann"));
    ASSERT_EQ(dialog.tabs()->count(), 2);
    EXPECT_EQ(dialog.tabs()->tabText(0), QStringLiteral("Multiplication"));

    auto *view = dialog.tabs()->widget(0)->findChild<QTableView *>(QStringLiteral("grdFacts"));
    ASSERT_NE(view, nullptr);
    const auto *model = static_cast<const FactGridModel *>(view->model());
    const FactGrid &grid = model->grid();
    ASSERT_TRUE(grid.table);
    const auto row =
        std::find(grid.rowNumbers.begin(), grid.rowNumbers.end(), 7) - grid.rowNumbers.begin();
    const auto column = std::find(grid.columnNumbers.begin(), grid.columnNumbers.end(), 8) -
                        grid.columnNumbers.begin();
    const QModelIndex cell = model->index(int(row), int(column));
    EXPECT_EQ(model->data(cell, Qt::ToolTipRole).toString(),
              QStringLiteral("7 \u00D7 8: 4 of 5 right, 2.0 s on average"));
    EXPECT_EQ(model->data(cell, Qt::DisplayRole).toString(), masteryMark(Mastery::Learning));
    EXPECT_EQ(model->data(cell, Qt::BackgroundRole).value<QColor>(),
              masteryFill(Mastery::Learning));
    EXPECT_TRUE(model->data(cell, Qt::AccessibleTextRole).toString().endsWith("(learning)"));
    EXPECT_EQ(model->headerData(int(row), Qt::Vertical).toString(), QStringLiteral("7"));

    // Every state has a colour and a mark of its own.
    QStringList marks;
    QList<QRgb> fills;
    for (const Mastery mastery : MasteryLegend) {
        EXPECT_FALSE(marks.contains(masteryMark(mastery)));
        EXPECT_FALSE(fills.contains(masteryFill(mastery).rgb()));
        marks << masteryMark(mastery);
        fills << masteryFill(mastery).rgb();
    }

    auto *missed = dialog.findChild<QTableWidget *>(QStringLiteral("grdMissed"));
    ASSERT_NE(missed, nullptr);
    ASSERT_EQ(missed->rowCount(), 2);
    EXPECT_EQ(missed->item(0, 0)->text(), QStringLiteral("Spelling"));
    EXPECT_EQ(missed->item(0, 1)->text(), QStringLiteral("Q0"));
}

TEST_F(FluencyViewsTest, FactsSaveAsPdfWritesTheChosenFileAndNothingElse)
{
    open();
    answerSevenEights();
    const auto before = std::distance(std::filesystem::directory_iterator(folder()),
                                      std::filesystem::directory_iterator());
    FactsDialog dialog(history->queries(), bank, 0, QStringLiteral("Ann"), prompt);
    const std::filesystem::path pdf = folder() / "out" / "ann";
    std::filesystem::create_directories(pdf.parent_path());
    prompt.answerSaveFile(QString::fromStdString(pdf.string()));
    dialog.saveReport();
    QFile written(QString::fromStdString(pdf.string() + ".pdf"));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.read(5) == "%PDF-");
    EXPECT_EQ(prompt.shown().size(), 1u); // the file dialog, and no complaint
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder()),
                            std::filesystem::directory_iterator()),
              before + 1); // the folder made for the PDF only

    prompt.answerSaveFile(QString::fromStdString((folder() / "missing" / "x.pdf").string()));
    dialog.saveReport();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Stop);
}

TEST_F(FluencyViewsTest, WhoNeedsHelpSortsByEachColumnsValue)
{
    open({"Ann", "Bob", "Cy"});
    for (int i = 0; i < 10; ++i) {
        clock.advance(86'400'000);
        takeTest(0, ArithmeticSubject, 4, {true, i < 5, i < 5, true}); // falling from 4 to 0
        takeTest(1, ArithmeticSubject, 4, {true, true, i >= 5, true}); // rising
    }
    ClassViewDialog dialog(
        makeClassOverview(history->queries(), {"Ann", "Bob", "Cy"}, BuiltInSubjects));
    QSortFilterProxyModel *sorted = dialog.sorted();
    ASSERT_EQ(sorted->rowCount(), 3);
    auto name = [sorted](int row) {
        return sorted->index(row, NeedsHelpModel::StudentColumn).data().toString();
    };
    // At first the falling scores come first.
    EXPECT_EQ(name(0), QStringLiteral("Ann"));
    EXPECT_EQ(sorted->index(0, NeedsHelpModel::TrendColumn).data().toString(),
              QStringLiteral("down: 0.0 from 4.0"));

    dialog.table()->sortByColumn(NeedsHelpModel::ChangeColumn, Qt::DescendingOrder);
    EXPECT_EQ(name(0), QStringLiteral("Bob"));
    EXPECT_EQ(name(2), QStringLiteral("Cy")); // no tests: below any change
    auto *sortBy = dialog.findChild<QComboBox *>(QStringLiteral("cmbSortBy"));
    ASSERT_NE(sortBy, nullptr);
    EXPECT_EQ(sortBy->currentIndex(), int(NeedsHelpModel::ChangeColumn));

    auto *descending = dialog.findChild<QCheckBox *>(QStringLiteral("chkDescending"));
    ASSERT_NE(descending, nullptr);
    EXPECT_TRUE(descending->isChecked());
    descending->setChecked(false);
    sortBy->setCurrentIndex(NeedsHelpModel::StudentColumn);
    EXPECT_EQ(name(0), QStringLiteral("Ann"));
    EXPECT_EQ(name(2), QStringLiteral("Cy"));
}

TEST_F(FluencyViewsTest, ClassReportGainsWhoNeedsHelpAndTheQuestionsMissedMost)
{
    open();
    takeTest(0, SpellingSubject, 3, {false, true});
    takeTest(1, SpellingSubject, 3, {false, false});
    // A spelling shown as its four choices alone has no question text.
    HistoryRecorder &recorder = history->recorder();
    recorder.beginTest({2, SpellingSubject, 3, 30, false});
    recorder.recordChoice({"", {"said", "sed", "siad", "sayd"}, 0, 1});
    recorder.endTest({-1, 0, 1, false});
    ClassReport report;
    report.title = "Class results: 3B";
    const std::size_t before = report.lists.size();
    addHistoryLists(report, history->queries(), bank, {"Ann", "Bob", "Cy"},
                    [](LocalSeconds) { return std::string("today"); });
    ASSERT_EQ(report.lists.size(), before + 2);
    EXPECT_EQ(report.lists[0].heading, "Who needs help");
    EXPECT_EQ(report.lists[0].rows.size(), 3u);
    EXPECT_EQ(report.lists[1].heading, "Spelling, level 3: the questions missed most");
    ASSERT_EQ(report.lists[1].rows.size(), 3u);
    EXPECT_EQ(report.lists[1].rows[0], (std::vector<std::string>{"Q0", "a", "2", "2"}));
    EXPECT_EQ(report.lists[1].rows[1],
              (std::vector<std::string>{"(the choices only)", "said", "1", "1"}));

    QBuffer nowhere;
    ASSERT_TRUE(nowhere.open(QIODevice::WriteOnly));
    QPdfWriter writer(&nowhere);
    const int withLists = ClassReportPainter(writer, report).pageCount();
    ClassReport plain = report;
    plain.lists.clear();
    EXPECT_EQ(withLists, ClassReportPainter(writer, plain).pageCount() + 1);
}

} // namespace
