// Whatever the adult types on the Tests screen (subject names, question texts,
// number ranges at their ends), the screen shows what the Tests file then
// holds, and the file loads again. Test lengths are in TestsScreen_test.cpp.
#include "TestsScreenFixture.h"
#include "ui/FileText.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>

#include <string>
#include <vector>

namespace {

struct TextCase {
    const char *what;
    QString typed;
    QString kept; // as the screen shows it and the file holds it
};

// Texts from every corner of what a keyboard, a paste or an input method gives.
const std::vector<TextCase> &TextCases()
{
    static const std::vector<TextCase> cases = {
        {"an emoji", QStringLiteral("Art \U0001F3A8"), QStringLiteral("Art ?")},
        {"Hebrew", QStringLiteral("מוזיקה"), QStringLiteral("??????")},
        {"Windows-1252 letters", QStringLiteral("Éire €5"), QStringLiteral("Éire €5")},
        {"a tab and a newline", QStringLiteral("A\tB\nC"), QStringLiteral("A\tB\nC")},
        {"control characters", QStringLiteral("\x01x\x7f"), QStringLiteral("\x01x\x7f")},
        {"a lone ampersand", QStringLiteral("&"), QStringLiteral("&")},
        {"markup", QStringLiteral("<b>Art</b> & <i>Craft</i>"),
         QStringLiteral("<b>Art</b> & <i>Craft</i>")},
    };
    return cases;
}

class TestsUserInputTest : public TestsScreenFixture {
protected:
    QComboBox *subjects() const { return control<QComboBox>(QStringLiteral("cmbSubject")); }
    QTableView *grid() const { return control<QTableView>(QStringLiteral("Grid1")); }
    QLineEdit *txt(int index) const
    {
        return control<QLineEdit>(QStringLiteral("txt%1").arg(index));
    }

    // Picks an entry of a drop-down list as the user does.
    void pick(const QString &list, const QString &entry)
    {
        QComboBox *box = control<QComboBox>(list);
        const int index = box->findText(entry);
        ASSERT_GE(index, 0) << Utf8(list) << " offers " << Utf8(entry);
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    TestBank closeAndLoad()
    {
        click(QStringLiteral("cmdClose"));
        return loadedTests();
    }
};

} // namespace

TEST_F(TestsUserInputTest, SubjectNamesAreListedAsTheFileKeepsThem)
{
    open(1);
    std::vector<std::string> listed;
    std::vector<TextCase> cases = TextCases();
    cases.push_back({"70,000 characters", QString(70000, QLatin1Char('x')), {}});
    for (const TextCase &entry : cases) {
        prompt.answerInput(entry.typed);
        click(QStringLiteral("cmdAddSubject"));
        // A name keeps its first twenty characters.
        const std::string kept =
            Utf8(entry.kept.isEmpty() ? QString(20, QLatin1Char('x')) : entry.kept.left(20));
        EXPECT_EQ(Utf8(subjects()->currentText()), kept) << entry.what;
        EXPECT_EQ(session.records.CurrentSubjectName, kept) << entry.what;
        listed.push_back(Utf8(subjects()->currentText()));
    }
    // Renaming converts the same way.
    prompt.answerInput(QStringLiteral("Tom & Jerry \U0001F431\U0001F42D"));
    click(QStringLiteral("cmdEditSubject"));
    EXPECT_EQ(Utf8(subjects()->currentText()), "Tom & Jerry ??");
    listed.back() = Utf8(subjects()->currentText());
    EXPECT_EQ(prompt.shown().size(), cases.size() + 1) << "no message besides the input boxes";

    const TestBank loaded = closeAndLoad();
    ASSERT_EQ(loaded.Subjects.size(), 6 + cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(loaded.Subjects[6 + i].Name, listed[i]) << cases[i].what;
}

TEST_F(TestsUserInputTest, QuestionTextsAreStoredAsTheGridShowsThem)
{
    open(1);
    std::vector<TextCase> cases = TextCases();
    cases.push_back({"70,000 characters", QString(70000, QLatin1Char('q')),
                     QString(FileTextMaxLength, QLatin1Char('q'))});
    for (std::size_t c = 0; c < cases.size(); ++c) {
        const TextCase &entry = cases[c];
        const int row = 5 * static_cast<int>(c);
        grid()->setCurrentIndex(grid()->model()->index(row, 0));
        for (int field = 1; field <= 5; ++field) {
            txt(field)->selectAll();
            // As a paste, but the longest text is set: a line edit files a paste
            // into its undo history character by character, which under
            // AddressSanitizer takes minutes at that length. The box cuts set
            // text to its maximum length all the same.
            if (entry.typed.size() > FileTextMaxLength)
                txt(field)->setText(entry.typed);
            else
                txt(field)->insert(entry.typed);
            EXPECT_EQ(Utf8(txt(field)->text()), Utf8(entry.kept)) << entry.what << " " << field;
            EXPECT_EQ(Utf8(cell(*grid(), row, field)), Utf8(entry.kept))
                << entry.what << " " << field;
        }
    }
    // A question moved to a full level keeps its odd texts, and every subject
    // grows a slot.
    grid()->setCurrentIndex(grid()->model()->index(0, 0));
    control<QComboBox>(QStringLiteral("cmbLevel"))->setCurrentIndex(12);
    const int moved = grid()->currentIndex().row();
    EXPECT_EQ(Utf8(cell(*grid(), moved, 1)), Utf8(cases[0].kept));
    EXPECT_EQ(cell(*grid(), moved, 0), QStringLiteral("12"));

    // Every row the grid shows is in the file, text for text.
    std::vector<std::vector<std::string>> shown;
    for (int r = 0; r < grid()->model()->rowCount(); ++r) {
        shown.emplace_back();
        for (int column = 0; column < 6; ++column)
            shown.back().push_back(Utf8(cell(*grid(), r, column)));
    }
    const TestBank loaded = closeAndLoad();
    EXPECT_EQ(loaded.QuestionMax, 12);
    std::vector<std::vector<std::string>> inFile;
    for (int level = 0; level < LevelCount; ++level)
        for (int slot = 0; slot <= loaded.Limits[1].LastQuestion[level]; ++slot) {
            const Question &question = loaded.QuestionBank[1].Items()[level][slot];
            inFile.push_back({LevelText(level), question.Text, question.Answer, question.Wrong1,
                              question.Wrong2, question.Wrong3});
        }
    EXPECT_TRUE(inFile == shown) << "the loaded questions differ from the grid";
}

TEST_F(TestsUserInputTest, RangesAtTheEndsOfTheListsAreStoredAsTheGridShowsThem)
{
    open(0);
    QTableView *levels = control<QTableView>(QStringLiteral("Grid2"));
    const int level = 9; // "x" only
    pick(QStringLiteral("cmbLevel2"), QStringLiteral("9"));
    for (int operation : {0, 1, 3})
        control<QRadioButton>(QStringLiteral("optOn%1").arg(operation))->click();
    // Addition 0..30 and 30..30; subtraction 0..0 and 0..30; division 1..30 and 30..30.
    const struct {
        int operation;
        const char *low1, *high1, *low2, *high2;
    } ranges[] = {{0, "0", "30", "30", "30"}, {1, "0", "0", "0", "30"}, {3, "1", "30", "30", "30"}};
    for (const auto &range : ranges) {
        const QString op = QString::number(range.operation);
        // Highs first, so that no low ever passes its high.
        pick(QStringLiteral("cmbHigh1_") + op, QString::fromLatin1(range.high1));
        pick(QStringLiteral("cmbLow1_") + op, QString::fromLatin1(range.low1));
        pick(QStringLiteral("cmbHigh2_") + op, QString::fromLatin1(range.high2));
        pick(QStringLiteral("cmbLow2_") + op, QString::fromLatin1(range.low2));
        const int first = 4 * range.operation + 1;
        std::vector<std::string> shown;
        for (int k = 0; k < 4; ++k)
            shown.push_back(Utf8(cell(*levels, level + 3, first + k)));
        EXPECT_EQ(shown,
                  (std::vector<std::string>{range.low1, range.high1, range.low2, range.high2}));
    }
    EXPECT_TRUE(prompt.shown().empty()) << "no range was refused";

    const TestBank loaded = closeAndLoad();
    EXPECT_EQ(loaded.ArithOps[level], "x+-/");
    for (const auto &range : ranges) {
        const int op = range.operation;
        EXPECT_EQ((std::vector<std::string>{std::to_string(loaded.ArithLow1[level][op]),
                                            std::to_string(loaded.ArithHigh1[level][op]),
                                            std::to_string(loaded.ArithLow2[level][op]),
                                            std::to_string(loaded.ArithHigh2[level][op])}),
                  (std::vector<std::string>{range.low1, range.high1, range.low2, range.high2}))
            << op;
    }
}
