// The help screens: each opens on its own page, with centred, underlined
// section headings between rules, and the main page tells where this
// installation keeps its data.
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

// The level-3 headings of a shown page in reading order; one that is not both
// centred and underlined is marked "(plain)".
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

} // namespace

TEST(HelpScreen, EachScreenOpensOnItsOwnPageAndCloses)
{
    const TempDataDir data;
    const struct {
        HelpPage page;
        QString title;
        QStringList headings;
        QString html; // the page as written, for the rules between sections
    } screens[] = {
        {HelpPage::Main,
         QStringLiteral("Tavrino: Help"),
         {"Help Topics", "Overview", "Performing a Test", "Students", "Tests"},
         MainHelpPage(QStringLiteral("/somewhere/data"), true)},
        {HelpPage::Students,
         QStringLiteral("Tavrino: Students Screen Help"),
         {"Students", "Scores"},
         StudentsHelpPage()},
        {HelpPage::Tests,
         QStringLiteral("Tavrino: Tests Screen Help"),
         {"Tests", "Subjects", "Arithmetic"},
         TestsHelpPage()},
    };
    for (const auto &expected : screens) {
        SCOPED_TRACE(expected.title.toStdString());
        HelpScreen screen(expected.page, data.paths());
        EXPECT_EQ(screen.windowTitle(), expected.title);
        ASSERT_NE(Browser(screen), nullptr);
        const QTextDocument &document = *Browser(screen)->document();
        EXPECT_EQ(Headings(document), expected.headings);
        EXPECT_EQ(expected.html.count(QStringLiteral("<hr><center><u><h3>")),
                  expected.html.count(QStringLiteral("<center><u><h3>")) - 1);

        auto *cmdClose = screen.findChild<QPushButton *>(QStringLiteral("cmdClose"));
        ASSERT_NE(cmdClose, nullptr);
        screen.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&screen));
        QTest::mouseClick(cmdClose, Qt::LeftButton);
        EXPECT_FALSE(screen.isVisible());
        EXPECT_EQ(screen.result(), QDialog::Accepted);
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
