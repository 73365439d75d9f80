// Whatever is typed or pasted as a student's name, the Students screen shows
// exactly what the Students file keeps, and the file loads again. The first
// name, asked for on the first run, is checked with the first run.
#include "StudentsTestFixture.h"

#include "testsupport/ShownText.h"
#include "ui/FileText.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>

TEST_F(StudentsScreenTest, PastedNamesAreShownAsTheFileKeepsThem)
{
    const struct {
        const char *what;
        QString typed;
        QString kept; // as the screen shows it and the file holds it
    } cases[] = {
        {"Windows-1252 letters", QStringLiteral("Zoë Ünal"), QStringLiteral("Zoë Ünal")},
        {"an emoji", QStringLiteral("Ann \U0001F600"), QStringLiteral("Ann ?")},
        {"Hebrew", QStringLiteral("שרה"), QStringLiteral("???")},
        {"a tab", QStringLiteral("A\tB"), QStringLiteral("A\tB")},
        {"control characters", QStringLiteral("x\x01y\x7f"), QStringLiteral("x\x01y\x7f")},
        {"a lone ampersand", QStringLiteral("&"), QStringLiteral("&")},
        {"markup", QStringLiteral("<b>Bo</b> & Co"), QStringLiteral("<b>Bo</b> & Co")},
    };
    writeRoster({"Ann"});
    session.bank.Subjects[4].Name = "Salt & <i>Pepper</i>";
    const std::string longest(FileTextMaxLength, 'n');
    std::vector<std::string> expected = {"Ann"};
    {
        auto screen = openScreen();
        auto *name = child<QLineEdit>(*screen, "txtStudent");
        auto *list = child<QListWidget>(*screen, "List1");
        auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
        const int width = screen->sizeHint().width();
        for (const auto &entry : cases) {
            screen->cmdAddStudent_Click();
            name->insert(entry.typed); // a paste goes through what typing goes through
            const std::string kept = Utf8(entry.kept);
            EXPECT_EQ(Utf8(name->text()), kept) << entry.what;
            EXPECT_EQ(Utf8(list->currentItem()->text()), kept) << entry.what;
            EXPECT_EQ(Utf8(ShownText(*heading)), kept) << entry.what;
            expected.push_back(kept);
        }

        // A name longer than the file holds is cut. Set rather than pasted: a line
        // edit files a paste into its undo history character by character, which
        // under AddressSanitizer takes minutes at this length.
        screen->cmdAddStudent_Click();
        name->setText(QString(70000, QLatin1Char('n')));
        EXPECT_EQ(Utf8(list->currentItem()->text()), longest);
        name->insert(QStringLiteral("\U0001F600")); // a full box takes no more
        EXPECT_EQ(Utf8(name->text()), longest);
        EXPECT_EQ(screen->sizeHint().width(), width) << "the screen fits the display";
        expected.push_back(longest);
        EXPECT_EQ(Lines(*list), expected);

        // Every student by name in the grid of one subject, and the subject's
        // name over it as it is written.
        child<QRadioButton>(*screen, "optBySubject")->click();
        child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(4);
        EXPECT_EQ(Utf8(ShownText(*heading)), "Salt & <i>Pepper</i>");
        const QAbstractItemModel *grid = child<QTableView>(*screen, "Grid1")->model();
        for (std::size_t student = 0; student < expected.size(); ++student)
            EXPECT_EQ(Utf8(grid->index(2 * static_cast<int>(student) + 1, 0).data().toString()),
                      expected[student]);
        screen->cmdClose_Click();
    }
    EXPECT_TRUE(prompt.shown().empty()) << "the roster was saved without a complaint";
    EXPECT_EQ(Names(saved()), expected);

    // After a restart the screen lists the same names.
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_EQ(Lines(*child<QListWidget>(*reopened, "List1")), expected);
}
