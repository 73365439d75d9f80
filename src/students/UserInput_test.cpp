// Whatever is typed or pasted as a student's name, the Students screen shows
// exactly what the Students file keeps, and the file loads again.
#include "StudentsTestFixture.h"

#include "testsupport/ShownText.h"
#include "ui/FileText.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTableView>

#include <string>
#include <vector>

namespace {

struct NameCase {
    const char *what;
    QString typed;
    QString kept; // as the screen shows it and the file holds it
};

const std::vector<NameCase> &NameCases()
{
    static const std::vector<NameCase> cases = {
        {"Windows-1252 letters", QStringLiteral("Zoë Ünal"), QStringLiteral("Zoë Ünal")},
        {"an emoji", QStringLiteral("Ann \U0001F600"), QStringLiteral("Ann ?")},
        {"Arabic", QStringLiteral("سارة"), QStringLiteral("????")},
        {"Hebrew", QStringLiteral("שרה"), QStringLiteral("???")},
        {"a tab", QStringLiteral("A\tB"), QStringLiteral("A\tB")},
        {"control characters", QStringLiteral("x\x01y\x7f"), QStringLiteral("x\x01y\x7f")},
        {"a lone ampersand", QStringLiteral("&"), QStringLiteral("&")},
        {"an ampersand", QStringLiteral("Tom & Jerry"), QStringLiteral("Tom & Jerry")},
        {"markup", QStringLiteral("<b>Bo</b>"), QStringLiteral("<b>Bo</b>")},
    };
    return cases;
}

// Texts are compared as UTF-8, which failure messages print readably.
std::string Utf8(const QString &text)
{
    return text.toStdString();
}

std::vector<std::string> Lines(const QListWidget &list)
{
    std::vector<std::string> texts;
    for (int row = 0; row < list.count(); ++row)
        texts.push_back(Utf8(list.item(row)->text()));
    return texts;
}

std::vector<std::string> Names(const StudentRecords &records)
{
    std::vector<std::string> names;
    for (const Student &student : records.Students)
        names.push_back(student.Name);
    return names;
}

} // namespace

TEST_F(StudentsScreenTest, PastedNamesAreShownAsTheFileKeepsThem)
{
    writeRoster({"Ann"});
    session.bank.Subjects[4].Name = "Salt & <i>Pepper</i>";
    std::vector<std::string> expected = {"Ann"};
    {
        auto screen = openScreen();
        auto *name = child<QLineEdit>(*screen, "txtStudent");
        auto *list = child<QListWidget>(*screen, "List1");
        auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
        for (const NameCase &entry : NameCases()) {
            screen->cmdAddStudent_Click();
            name->insert(entry.typed); // a paste goes through what typing goes through
            const std::string kept = Utf8(entry.kept);
            EXPECT_EQ(Utf8(name->text()), kept) << entry.what;
            EXPECT_EQ(Utf8(list->currentItem()->text()), kept) << entry.what;
            EXPECT_EQ(Utf8(ShownText(*heading)), kept) << entry.what;
            expected.push_back(kept);
        }
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
    EXPECT_EQ(Names(saved()), expected);

    // After a restart the screen lists the same names.
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_EQ(Lines(*child<QListWidget>(*reopened, "List1")), expected);
    EXPECT_EQ(Utf8(child<QLineEdit>(*reopened, "txtStudent")->text()), expected.back());
}

TEST_F(StudentsScreenTest, ANameLongerThanTheFileHoldsIsCutWhileTyping)
{
    writeRoster({"Ann"});
    const std::string longest(FileTextMaxLength, 'n');
    {
        auto screen = openScreen();
        auto *name = child<QLineEdit>(*screen, "txtStudent");
        const int width = screen->sizeHint().width();
        // Set rather than pasted: a line edit files a paste into its undo history
        // character by character, which under AddressSanitizer takes minutes at
        // this length. The box cuts set text to its maximum length all the same.
        name->setText(QString(70000, QLatin1Char('n')));
        EXPECT_EQ(Utf8(name->text()), longest);
        EXPECT_EQ(Utf8(child<QListWidget>(*screen, "List1")->item(0)->text()), longest);

        // A full box takes no more, emoji or not.
        name->end(false);
        name->insert(QStringLiteral("\U0001F600"));
        EXPECT_EQ(Utf8(name->text()), longest);

        // The long name does not stretch the screen beyond the display.
        EXPECT_EQ(screen->sizeHint().width(), width);
        screen->cmdClose_Click();
    }
    EXPECT_TRUE(prompt.shown().empty()) << "the roster was saved without a complaint";
    EXPECT_EQ(Names(saved()), std::vector<std::string>{longest});
}

TEST_F(StudentsScreenTest, TheFirstNameIsStoredAsTheListShowsIt)
{
    prompt.answerInput(QStringLiteral("\U0001F600 Ann & Co"));
    {
        auto screen = openScreen();
        EXPECT_EQ(Lines(*child<QListWidget>(*screen, "List1")),
                  std::vector<std::string>{"? Ann & Co"});
        screen->cmdClose_Click();
    }
    EXPECT_EQ(Names(saved()), std::vector<std::string>{"? Ann & Co"});
    EXPECT_EQ(session.records.CurrentStudentName, "? Ann & Co");
}
