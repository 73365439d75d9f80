// The Students screen's Report… and Export…: the report and the CSV of the
// roster as it stands, from the keyboard, with cancelling and failures, and a
// report too long for the preview offered as a PDF file.
#include "StudentsScreenFixture_test.h"

#include "reports/ClassReport.h"
#include "reports/ClassResultsCsv.h"
#include "testsupport/ScreenAccess.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

} // namespace

TEST_F(StudentsScreenTest, ReportAndExportTakeTheRosterAsItStandsFromTheKeyboard)
{
    writeRoster({"A", "B"});
    auto screen = openScreen();
    std::vector<ClassReport> previewed;
    screen->setReportPreviewer(
        [&previewed](QWidget *, const ClassReport &report) { previewed.push_back(report); });
    tabStops(*screen); // shown and active, so that its mnemonics work
    child<QLineEdit>(*screen, "txtStudent")->setText(QStringLiteral("Ann"));
    EXPECT_EQ(spokenName(*child(*screen, "cmdReport")), "Class report");
    EXPECT_EQ(spokenName(*child(*screen, "cmdExport")), "Export results");

    // Alt+R: the report of the roster in memory, not yet saved.
    // A mnemonic clicks its button a moment later, as the button is seen going down.
    QTest::keyClick(screen->focusWidget(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !previewed.empty(); }));
    ASSERT_EQ(previewed.size(), 1u);
    EXPECT_EQ(previewed[0].title, "Class results: " + className(dir.path()));
    ASSERT_EQ(previewed[0].tables.size(), session.bank.subjects.size());
    EXPECT_EQ(previewed[0].tables[0].rows[0].name, "Ann");

    // Alt+X: a file dialog; the file gets ".csv" when the name has no extension.
    const std::filesystem::path chosen = dir.path().parent_path() / "class";
    prompt.clear();
    prompt.answerSaveFile(QString::fromStdString(chosen.string()));
    QTest::keyClick(screen->focusWidget(), Qt::Key_X, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return prompt.last() != nullptr; }));
    EXPECT_EQ(prompt.last()->kind, Kind::SaveFile);
    EXPECT_TRUE(prompt.last()->defaultText.endsWith(QStringLiteral(".csv")));
    std::ostringstream expected;
    writeClassResultsCsv(expected, session.bank, session.records);
    const std::vector<unsigned char> written = readFileBytes(chosen.string() + ".csv");
    EXPECT_EQ(std::string(written.begin(), written.end()), expected.str());

    // Cancelling writes nothing and says nothing; a failure is told, naming the file.
    prompt.clear();
    child<QPushButton>(*screen, "cmdExport")->click();
    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString nowhere = QStringLiteral("/no/such/folder/class.csv");
    prompt.answerSaveFile(nowhere);
    child<QPushButton>(*screen, "cmdExport")->click();
    ASSERT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_TRUE(prompt.last()->text.contains(nowhere)) << prompt.last()->text.toStdString();
}

TEST_F(StudentsScreenTest, AReportTooLongToPreviewIsOfferedAsAPdfFile)
{
    writeRoster(std::vector<std::string>(400, "Student"));
    auto screen = openScreen();
    int previews = 0;
    screen->setReportPreviewer([&previews](QWidget *, const ClassReport &) { ++previews; });

    // Cancel: nothing is written.
    screen->showReport();
    EXPECT_EQ(lastConfirm(), "Class Report");
    EXPECT_TRUE(prompt.last()->text.contains(QStringLiteral("too many"))) << "pages";

    const std::filesystem::path chosen = dir.path().parent_path() / "report";
    prompt.answerConfirm(true);
    prompt.answerSaveFile(QString::fromStdString(chosen.string()));
    screen->showReport();
    EXPECT_EQ(prompt.last()->kind, Kind::SaveFile);
    EXPECT_TRUE(prompt.last()->defaultText.endsWith(QStringLiteral(".pdf")));
    const std::vector<unsigned char> pdf = readFileBytes(chosen.string() + ".pdf");
    EXPECT_EQ(std::string(pdf.begin(), pdf.begin() + std::min<std::size_t>(5, pdf.size())),
              "%PDF-");
    EXPECT_EQ(previews, 0);
}
