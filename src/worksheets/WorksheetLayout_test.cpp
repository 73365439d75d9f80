// Where a worksheet's texts land on its pages: inside the printable area and
// clear of each other, numbered in order, a question never split from its
// choices, the key on pages of its own, and as many columns as fit.
#include "worksheets/WorksheetLayout.h"

#include "core/DefaultBank.h"
#include "worksheets/Worksheet.h"
#include "worksheets/WorksheetPainter.h"

#include <QBuffer>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using Role = PlacedText::Role;

TestBank defaultBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    return bank;
}

Worksheet sheetOf(const TestBank &bank, int subject, int level, int count = MaxWorksheetCount,
                  bool key = true)
{
    WorksheetSettings settings;
    settings.count = count;
    settings.answerKey = key;
    settings.seed = 99;
    return makeWorksheet(bank, subject, level, settings);
}

// An A4 PDF writer over a buffer, or one with pages of the given size in millimetres.
struct Paper {
    explicit Paper(QSizeF millimetres = {})
    {
        buffer.open(QIODevice::WriteOnly);
        writer = std::make_unique<QPdfWriter>(&buffer);
        QPageLayout layout = worksheetPageLayout(QLocale(QLocale::English, QLocale::UnitedKingdom));
        if (!millimetres.isEmpty())
            layout.setPageSize(QPageSize(millimetres, QPageSize::Millimeter));
        writer->setPageLayout(layout);
    }
    QBuffer buffer;
    std::unique_ptr<QPdfWriter> writer;
};

std::vector<const PlacedText *> textsOf(const WorksheetLayout &layout, Role role, bool key)
{
    std::vector<const PlacedText *> found;
    for (const WorksheetPage &page : layout.pages())
        if (page.key == key)
            for (const PlacedText &text : page.texts)
                if (text.role == role)
                    found.push_back(&text);
    return found;
}

} // namespace

TEST(WorksheetLayout, EveryTextIsOnItsPageAndClearOfTheOthers)
{
    TestBank bank = defaultBank();
    // A question and answers far longer than any built in, to be wrapped.
    const std::string words(40, 'w');
    std::string longText;
    for (int i = 0; i < 12; ++i)
        longText += "word" + std::to_string(i) + " ";
    bank.questionBank[3].items()[5][0] = {longText + "?", longText, "short", words + words, "x"};
    Paper a4;
    Paper narrow(QSizeF(100, 160));
    const std::vector<std::pair<Worksheet, QPdfWriter *>> cases = {
        {sheetOf(bank, ArithmeticSubject, 0), a4.writer.get()},
        {sheetOf(bank, ArithmeticSubject, 2), a4.writer.get()},
        {sheetOf(bank, ArithmeticSubject, 12), a4.writer.get()},
        {sheetOf(bank, SpellingSubject, 4), a4.writer.get()},
        {sheetOf(bank, 2, 1), a4.writer.get()},
        {sheetOf(bank, 3, 5, 20), a4.writer.get()},
        {sheetOf(bank, 3, 5, 20), narrow.writer.get()},
        {sheetOf(bank, ArithmeticSubject, 2), narrow.writer.get()},
    };
    for (const auto &[sheet, writer] : cases) {
        const WorksheetLayout layout(*writer, sheet);
        SCOPED_TRACE(worksheetHeading(sheet) + " on a page " + std::to_string(layout.width()) +
                     " points wide");
        const QRectF area(0, 0, layout.width(), layout.height());
        for (std::size_t p = 0; p < layout.pages().size(); ++p) {
            const std::vector<PlacedText> &texts = layout.pages()[p].texts;
            for (std::size_t i = 0; i < texts.size(); ++i) {
                const QRectF &box = texts[i].bounds;
                EXPECT_TRUE(area.adjusted(-0.01, -0.01, 0.01, 0.01).contains(box))
                    << "page " << p + 1 << ": " << texts[i].text.toStdString();
                for (std::size_t j = i + 1; j < texts.size(); ++j)
                    EXPECT_FALSE(box.intersects(texts[j].bounds))
                        << "page " << p + 1 << ": " << texts[i].text.toStdString() << " | "
                        << texts[j].text.toStdString();
            }
            for (const QLineF &line : layout.pages()[p].writingLines)
                EXPECT_LE(std::max(line.x1(), line.x2()), layout.width() + 0.01);
        }
    }
}

TEST(WorksheetLayout, ProblemsAreNumberedInOrderAndTheKeyFollowsOnPagesOfItsOwn)
{
    const TestBank bank = defaultBank();
    Paper a4;
    for (const int subject : {ArithmeticSubject, SpellingSubject}) {
        for (const bool key : {true, false}) {
            const Worksheet sheet = sheetOf(bank, subject, 4, MaxWorksheetCount, key);
            const WorksheetLayout layout(*a4.writer, sheet);
            SCOPED_TRACE(worksheetHeading(sheet) + (key ? " with its key" : " without a key"));
            const std::vector<const PlacedText *> numbers = textsOf(layout, Role::Number, false);
            ASSERT_EQ(numbers.size(), static_cast<std::size_t>(MaxWorksheetCount));
            for (std::size_t i = 0; i < numbers.size(); ++i)
                EXPECT_EQ(numbers[i]->text, QStringLiteral("%1.").arg(i + 1));

            const std::vector<std::string> answers = answerKey(sheet);
            const std::vector<const PlacedText *> entries = textsOf(layout, Role::KeyEntry, true);
            ASSERT_EQ(entries.size(), key ? answers.size() : 0u);
            for (std::size_t i = 0; i < entries.size(); ++i)
                EXPECT_EQ(entries[i]->text.toStdString(),
                          std::to_string(i + 1) + ". " + answers[i]);

            // Sheet pages first, then key pages, each key page headed as one.
            const std::vector<WorksheetPage> &pages = layout.pages();
            ASSERT_GE(pages.size(), key ? 2u : 1u);
            EXPECT_FALSE(pages.front().key);
            EXPECT_EQ(pages.back().key, key);
            for (std::size_t p = 1; p < pages.size(); ++p) {
                EXPECT_GE(pages[p].key, pages[p - 1].key) << "page " << p + 1;
                if (pages[p].key) {
                    EXPECT_TRUE(pages[p].texts.front().text.startsWith("Answer key"));
                }
            }
            // A page's footer tells which it is and the seed to make it again.
            const std::vector<const PlacedText *> footers = textsOf(layout, Role::Footer, key);
            EXPECT_TRUE(footers.front()->text.contains(QStringLiteral("Seed 99")));
            EXPECT_EQ(footers.back()->text, QStringLiteral("Page %1 of %1").arg(pages.size()));
        }
    }
}

TEST(WorksheetLayout, ArithmeticStandsInAsManyColumnsAsFitAndChoicesStayWithTheirQuestion)
{
    const TestBank bank = defaultBank();
    Paper a4;
    Paper narrow(QSizeF(100, 160));
    EXPECT_EQ(WorksheetLayout(*a4.writer, sheetOf(bank, ArithmeticSubject, 0)).columns(), 3);
    EXPECT_GE(WorksheetLayout(*a4.writer, sheetOf(bank, ArithmeticSubject, 5)).columns(), 2);
    EXPECT_EQ(WorksheetLayout(*narrow.writer, sheetOf(bank, ArithmeticSubject, 5)).columns(), 1);

    // Problems go across a row and then down: one row, one baseline, numbers
    // rising. Thirty, as many as a sheet has unless asked, fill one page.
    const WorksheetLayout layout(*a4.writer, sheetOf(bank, ArithmeticSubject, 2, 30, false));
    EXPECT_EQ(layout.pages().size(), 1u);
    Paper letter(QPageSize(QPageSize::Letter).size(QPageSize::Millimeter));
    EXPECT_EQ(WorksheetLayout(*letter.writer, sheetOf(bank, ArithmeticSubject, 5, 30, false))
                  .pages()
                  .size(),
              1u);
    const std::vector<const PlacedText *> problems = textsOf(layout, Role::Problem, false);
    ASSERT_EQ(problems.size(), 30u);
    for (std::size_t i = 1; i < problems.size(); ++i) {
        const bool sameRow = i % layout.columns() != 0;
        EXPECT_EQ(problems[i]->baseline.y() == problems[i - 1]->baseline.y(), sameRow) << i;
        if (sameRow) {
            EXPECT_GT(problems[i]->bounds.left(), problems[i - 1]->bounds.right()) << i;
        } else {
            // Room to write the answer above the line.
            EXPECT_GT(problems[i]->bounds.top() - problems[i - 1]->bounds.bottom(),
                      0.8 * problems[i]->bounds.height())
                << i;
        }
    }

    // Multiple choice: a question's lines and its four choices share a page.
    const WorksheetLayout choices(*a4.writer, sheetOf(bank, SpellingSubject, 4));
    for (const WorksheetPage &page : choices.pages()) {
        if (page.key)
            continue;
        int choicesSinceNumber = 4;
        for (const PlacedText &text : page.texts) {
            if (text.role == Role::Number) {
                EXPECT_EQ(choicesSinceNumber, 4) << text.text.toStdString();
                choicesSinceNumber = 0;
            } else if (text.role == Role::Choice) {
                ++choicesSinceNumber;
            }
        }
        EXPECT_EQ(choicesSinceNumber, 4);
    }
}
