// The help screens: each opens on its own page and closes, the main page tells
// where this installation keeps its data, the Tests page's examples hold, and
// the classroom mode's pages say what only the teacher's copy does.
#include "help/HelpScreen.h"

#include "core/DefaultBank.h"
#include "help/HelpPages.h"
#include "testsupport/TempDataDir.h"

#include <QDir>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

#include <gtest/gtest.h>

#include <ostream>

// Readable failure messages for texts.
static void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

QTextBrowser *browser(const HelpScreen &screen)
{
    return screen.findChild<QTextBrowser *>(QStringLiteral("WB"));
}

// The section headings of a shown page, in reading order.
QStringList headings(const QTextDocument &document)
{
    QStringList headings;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() == 3)
            headings << block.text();
    return headings;
}

} // namespace

TEST(HelpScreen, EachScreenOpensOnItsOwnPageAndCloses)
{
    const TempDataDir data;
    const struct {
        HelpPage page;
        QString title;
        QStringList headings;
    } screens[] = {
        {HelpPage::Main,
         QStringLiteral("Tavrino: Help"),
         {"Help Topics", "Overview", "Performing a Test", "Students", "Tests"}},
        {HelpPage::Students,
         QStringLiteral("Tavrino: Students Screen Help"),
         {"Students", "Scores", "Backups"}},
        {HelpPage::Tests,
         QStringLiteral("Tavrino: Tests Screen Help"),
         {"Tests", "Subjects", "Arithmetic"}},
    };
    for (const auto &expected : screens) {
        SCOPED_TRACE(expected.title.toStdString());
        HelpScreen screen(expected.page, data.paths());
        EXPECT_EQ(screen.windowTitle(), expected.title);
        ASSERT_NE(browser(screen), nullptr);
        EXPECT_EQ(headings(*browser(screen)->document()), expected.headings);

        auto *closeButton = screen.findChild<QPushButton *>(QStringLiteral("cmdClose"));
        ASSERT_NE(closeButton, nullptr);
        screen.show();
        closeButton->click();
        EXPECT_FALSE(screen.isVisible());
    }
}

TEST(HelpScreen, MainPageSaysWhereThisInstallationKeepsItsData)
{
    // An awkward path: markup characters must show as text, not as tags.
    const QString dataDir = QStringLiteral("/home/a&b/<class>/data");
    const QString escaped = QStringLiteral("/home/a&amp;b/&lt;class&gt;/data");
    EXPECT_TRUE(
        mainHelpPage(dataDir, true)
            .contains(QStringLiteral("On this computer, the <b>data</b> directory is <b>%1</b>. ")
                          .arg(escaped)));
    const QString elsewhere = mainHelpPage(dataDir, false);
    EXPECT_TRUE(elsewhere.contains(QStringLiteral("cannot be written to")));
    EXPECT_TRUE(elsewhere.contains(QStringLiteral("<b>%1</b>. ").arg(escaped)));
    EXPECT_FALSE(elsewhere.contains(dataDir));

    // The screen shows the directory it was given.
    const TempDataDir data;
    const HelpScreen screen(HelpPage::Main, data.paths());
    const QString shown = QDir::toNativeSeparators(QDir(data.path()).absolutePath());
    EXPECT_TRUE(browser(screen)->toPlainText().contains(shown)) << shown.toStdString();
}

TEST(HelpScreen, TheExampleOfSwitchedNumbersIsAtALevelThatSwitchesThem)
{
    // The example names a level whose numbers the built-in settings switch, so
    // that a teacher who tries it there sees what the page describes.
    const QString page = testsHelpPage();
    const qsizetype section =
        page.indexOf(QStringLiteral("Alternate (switch) Positions of Numbers"));
    ASSERT_GE(section, 0);
    const QRegularExpressionMatch level =
        QRegularExpression(QStringLiteral("at Level (\\d+)")).match(page, section);
    ASSERT_TRUE(level.hasMatch());
    TestBank bank;
    buildDefaultTests(bank);
    EXPECT_TRUE(bank.arithSwitch.at(level.captured(1).toInt())[SwitchNumbers])
        << level.captured(0).toStdString();
}

TEST(HelpScreen, InClassroomModeThePagesSayWhereTheTeachersToolsAre)
{
    const TempDataDir data;
    const QString note = QStringLiteral("In this classroom copy of Tavrino,");
    for (const HelpPage page : {HelpPage::Main, HelpPage::Students}) {
        const HelpScreen teachers(page, data.paths());
        const HelpScreen classroom(page, data.paths(), ProgramMode::Classroom);
        const QString normalText = browser(teachers)->toPlainText();
        const QString classroomText = browser(classroom)->toPlainText();
        EXPECT_FALSE(normalText.contains(note));
        EXPECT_TRUE(classroomText.contains(note)) << int(page);
        EXPECT_TRUE(classroomText.contains(QStringLiteral("only the teacher's copy can"),
                                           Qt::CaseInsensitive));
        // The rest of the page is the same text.
        EXPECT_EQ(headings(*browser(classroom)->document()),
                  headings(*browser(teachers)->document()));
        EXPECT_GT(classroomText.size(), normalText.size());
    }
}
