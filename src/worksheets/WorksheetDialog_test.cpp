// The worksheet dialog: its defaults and limits, the seed field that takes only
// a seed, and the note on how many questions a multiple-choice sheet draws from.
#include "worksheets/WorksheetDialog.h"

#include "core/DefaultBank.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace {

template <typename W> W *child(QWidget &parent, const char *name)
{
    W *widget = parent.findChild<W *>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

} // namespace

TEST(WorksheetDialog, OffersThirtyProblemsWithAKeyAndAFreshSeedWithinItsLimits)
{
    TestBank bank;
    buildDefaultTests(bank);
    WorksheetDialog dialog(bank, ArithmeticSubject, 2);
    EXPECT_EQ(child<QLabel>(dialog, "lblWorksheet")->text(), QStringLiteral("Arithmetic, Level 2"));
    EXPECT_FALSE(child<QLabel>(dialog, "lblQuestionsNote")->isVisibleTo(&dialog));
    const WorksheetSettings defaults = dialog.settings();
    EXPECT_EQ(defaults.count, 30);
    EXPECT_TRUE(defaults.answerKey);
    EXPECT_FALSE(defaults.seed.has_value());

    auto *count = child<QSpinBox>(dialog, "txtCount");
    EXPECT_EQ(count->minimum(), 10);
    EXPECT_EQ(count->maximum(), 200);
    auto *preview = child<QPushButton>(dialog, "cmdPreview");
    auto *seed = child<QLineEdit>(dialog, "txtSeed");
    // Typed as a teacher types: only digits are taken, and Preview waits for a
    // number a seed can hold.
    QTest::keyClicks(seed, QStringLiteral("4x29-49 67295"));
    EXPECT_EQ(seed->text(), QStringLiteral("4294967295"));
    EXPECT_TRUE(preview->isEnabled());
    seed->setText(QStringLiteral("4294967296"));
    EXPECT_FALSE(preview->isEnabled());
    seed->setText(QStringLiteral("0"));
    EXPECT_TRUE(preview->isEnabled());

    count->setValue(200);
    child<QCheckBox>(dialog, "chkAnswerKey")->setChecked(false);
    const WorksheetSettings chosen = dialog.settings();
    EXPECT_EQ(chosen.count, 200);
    EXPECT_FALSE(chosen.answerKey);
    EXPECT_EQ(chosen.seed, 0u);
}

TEST(WorksheetDialog, TellsHowManyQuestionsAMultipleChoiceSheetDrawsFrom)
{
    TestBank bank;
    buildDefaultTests(bank);
    WorksheetDialog spelling(bank, SpellingSubject, 0);
    const QLabel *note = child<QLabel>(spelling, "lblQuestionsNote");
    EXPECT_TRUE(note->isVisibleTo(&spelling));
    EXPECT_TRUE(note->text().contains(QStringLiteral(" 24 "))) << note->text().toStdString();
    EXPECT_EQ(child<QLabel>(spelling, "lblWorksheet")->text(), QStringLiteral("Spelling, Level K"));
}
