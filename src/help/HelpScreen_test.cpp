#include "help/HelpScreen.h"

#include "help/HelpPages.h"
#include "testsupport/TempDataDir.h"

#include <QDir>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <ostream>
#include <utility>
#include <vector>

// Readable failure messages for texts.
static void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

QTextBrowser *Browser(const HelpScreen &screen)
{
    return screen.findChild<QTextBrowser *>(QStringLiteral("WB"));
}

// The centred, underlined level-3 headings of a shown page, in reading order.
QStringList Headings(const QTextDocument &document)
{
    QStringList headings;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() != 3)
            continue;
        const bool centred = block.blockFormat().alignment() & Qt::AlignHCenter;
        const bool underlined = block.begin().fragment().charFormat().fontUnderline();
        headings << (centred && underlined ? block.text()
                                           : QStringLiteral("(plain) ") + block.text());
    }
    return headings;
}

// Text shown in a face other than Verdana, if any.
QString TextNotInVerdana(const QTextDocument &document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QStringList families = fragment.charFormat().fontFamilies().toStringList();
            if (families.isEmpty() ||
                families.first().compare(QStringLiteral("verdana"), Qt::CaseInsensitive) != 0)
                return fragment.text();
        }
    }
    return {};
}

struct ScreenCase {
    HelpPage page;
    const char *objectName;
    const char *title;
    QStringList headings;
};

const std::vector<ScreenCase> &Screens()
{
    static const std::vector<ScreenCase> screens = {
        {HelpPage::Main,
         "frmHelp",
         "Tavrino: Help",
         {"Help Topics", "Overview", "Performing a Test", "Students", "Tests"}},
        {HelpPage::Students,
         "frmHelp_Profiles",
         "Tavrino: Students Screen Help",
         {"Students", "Scores"}},
        {HelpPage::Tests,
         "frmHelp_Tests",
         "Tavrino: Tests Screen Help",
         {"Tests", "Subjects", "Arithmetic"}},
    };
    return screens;
}

} // namespace

TEST(HelpScreen, EachScreenShowsItsTitleHeadingsAndVerdanaPageAndCloses)
{
    const TempDataDir data;
    for (const ScreenCase &expected : Screens()) {
        SCOPED_TRACE(expected.objectName);
        HelpScreen screen(expected.page, data.paths());
        EXPECT_EQ(screen.objectName(), QLatin1String(expected.objectName));
        EXPECT_EQ(screen.windowTitle(), QLatin1String(expected.title));
        EXPECT_TRUE(screen.isModal());

        const QTextBrowser *WB = Browser(screen);
        ASSERT_NE(WB, nullptr);
        const QTextDocument &document = *WB->document();
        // The page opens with its heading and every section heading is centred and underlined.
        EXPECT_EQ(document.begin().blockFormat().headingLevel(), 3);
        EXPECT_EQ(Headings(document), expected.headings);
        EXPECT_EQ(TextNotInVerdana(document), QString());

        auto *cmdClose = screen.findChild<QPushButton *>(QStringLiteral("cmdClose"));
        ASSERT_NE(cmdClose, nullptr);
        EXPECT_EQ(cmdClose->text(), QStringLiteral("Close"));
        screen.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&screen));
        QTest::mouseClick(cmdClose, Qt::LeftButton);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(screen.result(), QDialog::Accepted);
    }
}

TEST(HelpScreen, PagesHoldTheirSentencesWithSectionsBetweenRules)
{
    const QString main = MainHelpPage(QStringLiteral("/somewhere/data"), true);
    const QString students = StudentsHelpPage();
    const QString tests = TestsHelpPage();
    // Sentences quoted from each page, markup and all.
    const std::pair<const QString &, std::vector<const char *>> expected[] = {
        {main,
         {"<p><b><u>Overview:</u></b>",
          "<p><b><u>Performing a Test:</u></b>",
          "<p><b><u>Students:</u></b>",
          "<p><b><u>Tests:</u></b>",
          "How to Start and Stop a <b>Test</b>.",
          "How to manage an entire <b>Class</b>.",
          "<p>The Tavrino program will enable Students to perform <b>Multi-Level Timed Tests</b>.",
          "All modifications (to the <b>Students</b> and <b>Tests</b> data) are automatically "
          "Saved for you.",
          "All of the files used by this program are placed in a directory named "
          "<u><b>data</b></u>, which is located directly beneath the program's path. ",
          "c:\\Program Files\\Tavrino\\data",
          "<b>[Start Test]</b>",
          "<b>[Stop Test]</b>",
          "The <u><b>Score</b></u> is determined by subtracting the <b>Wrong</b> answers from the "
          "<b>Right</b> answers. ",
          "5 <b>Right</b>",
          "2 <b>Wrong</b>",
          "<b>[Students]</b>",
          "<ul><li><b>Arithmetic</b><li><b>Spelling</b><li><b>Geography</b><li><b>History</"
          "b><li><b>Music</b><li><b>Science</b></ul>",
          "If a Level is not available for a particular Subject, then it's button will be "
          "disabled. ",
          "6 - 12",
          "<b>[Tests]</b>"}},
        {students,
         {"using the screen (as pressing <b>[Enter]</b> causes this screen to Close). All "
          "modifications are then automatically Saved. ",
          "Selecting a Student:", "Editing a Student:", "Adding a New Student:",
          "Deleting a Student:", "Show Scores for one Student:", "Show Scores for one Subject:",
          "SCORES FOR", "Resetting Scores", "<b>[Reset This Student's Totals]</b>",
          "<b>[Reset ALL Student Totals]</b>"}},
        {tests,
         {"using the screen (as pressing <b>[Enter]</b> causes this screen to Close). All "
          "modifications are then automatically Saved. ",
          "Add Question:", "Delete Question:", "Changing a Level:",
          "Use Adjacent Levels (during Test):", "Selecting a Range of Numbers:",
          "Alternate (switch) Positions of Numbers:", "Alternate Position of 'Blank box':",
          "<ul><li><b>3 + 1</b><li><b>3 - 2</b>"}},
    };
    for (const auto &[page, sentences] : expected)
        for (const char *sentence : sentences)
            EXPECT_TRUE(page.contains(QString::fromUtf8(sentence))) << sentence;

    for (const QString *page : {&main, &students, &tests}) {
        EXPECT_TRUE(page->startsWith(QStringLiteral("<font face=verdana><center><u><h3>")));
        EXPECT_TRUE(page->endsWith(QStringLiteral("</font>")));
        // Every section after the first is set off by a rule.
        const int headings = page->count(QStringLiteral("<center><u><h3>"));
        EXPECT_EQ(page->count(QStringLiteral("<hr><center><u><h3>")), headings - 1);
    }
}

TEST(HelpScreen, MainPageSaysWhereThisInstallationKeepsItsData)
{
    // An awkward path: markup characters must show as text, not as tags.
    const QString dataDir = QStringLiteral("/home/a&b/<class>/data");
    const QString escaped = QStringLiteral("/home/a&amp;b/&lt;class&gt;/data");
    EXPECT_TRUE(
        MainHelpPage(dataDir, true)
            .contains(QStringLiteral("On this computer, the <b>data</b> directory is <b>%1</b>. ")
                          .arg(escaped)));
    const QString elsewhere = MainHelpPage(dataDir, false);
    EXPECT_TRUE(elsewhere.contains(QStringLiteral("cannot be written to")));
    EXPECT_TRUE(elsewhere.contains(QStringLiteral("<b>%1</b>. ").arg(escaped)));
    EXPECT_FALSE(elsewhere.contains(dataDir));

    // The screen shows the directory it was given.
    const TempDataDir data;
    const HelpScreen screen(HelpPage::Main, data.paths());
    const QString shown = QDir::toNativeSeparators(QDir(data.path()).absolutePath());
    EXPECT_TRUE(Browser(screen)->toPlainText().contains(shown)) << shown.toStdString();
}
