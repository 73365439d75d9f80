// Questions read aloud during a test: what is said for each kind of question
// on the screen, when it is said and cut off, and a computer without a voice.
#include "MainScreenFixture_test.h"

#include "speech/SpokenQuestion.h"
#include "testsupport/RecordingSpeaker.h"
#include "testsupport/ScreenAccess.h"
#include "testsupport/ShownText.h"

#include <QCheckBox>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using Log = std::vector<std::string>;

namespace {

std::string fileBytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace

class ReadAloudTest : public MainScreenTest {
protected:
    RecordingSpeaker voice;

    QCheckBox *readAloudBox() const { return find<QCheckBox>("chkReadAloud"); }
    void pressF2() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2); }

    // The Arithmetic problem on the screen as a teacher would read it, from the
    // boxes the child sees.
    std::string problemOnScreen() const
    {
        std::vector<std::string> said;
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"}) {
            const QString shown = box(name)->text();
            said.push_back(shown.isEmpty() ? "what" : numberInWords(shown.toLongLong()));
        }
        std::string sentence = said[0] + " " + operationInWords(operationOnScreen()) + " " +
                               said[1] + " equals " + said[2] + "?";
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        return sentence;
    }
};

TEST_F(ReadAloudTest, TheBoxIsOffWhereNoVoiceCanBeHeardAndKeptInNeitherFile)
{
    startUp();
    EXPECT_FALSE(readAloudBox()->isEnabled()) << "a program started without a voice";

    RecordingSpeaker muted("No sound device was found on this computer.");
    screen->setSpeaker(muted);
    screen->setReadAloud(true);
    EXPECT_FALSE(readAloudBox()->isChecked());
    EXPECT_FALSE(readAloudBox()->isEnabled());
    EXPECT_EQ(readAloudBox()->toolTip(), "No sound device was found on this computer.");
    screen->startTest();
    EXPECT_FALSE(shown("cmdSayAgain_Math"));
    typeAnswer(true);
    pressF2();
    screen->stopTest();
    EXPECT_EQ(text("lblScoreRight"), "1");
    EXPECT_EQ(muted.log(), Log());

    // With a voice, the box is a Tab stop before Start Test and Alt+R ticks it;
    // ticking it writes nothing.
    screen->setSpeaker(voice);
    const std::string studentsFile = fileBytes(session.paths.studentsPath);
    ASSERT_FALSE(studentsFile.empty());
    EXPECT_TRUE(readAloudBox()->isEnabled());
    EXPECT_FALSE(readAloudBox()->isChecked()) << "off until it is asked for";
    button("cmdSelectStudent")->setFocus();
    const std::vector<std::string> stops = tabStops(*screen);
    const auto start = std::find(stops.begin(), stops.end(), "cmdStartTest");
    ASSERT_NE(start, stops.begin());
    ASSERT_NE(start, stops.end());
    EXPECT_EQ(*std::prev(start), "chkReadAloud");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::AltModifier);
    // A mnemonic clicks the way a mouse does, releasing a moment later.
    EXPECT_TRUE(QTest::qWaitFor([this] { return readAloudBox()->isChecked(); }, 2000));
    EXPECT_EQ(fileBytes(session.paths.studentsPath), studentsFile);
    EXPECT_FALSE(std::filesystem::exists(session.paths.testsPath));

    // Cleared again, a test is silent and shows no Say it again.
    readAloudBox()->click();
    screen->startTest();
    EXPECT_FALSE(shown("cmdSayAgain_Math"));
    typeAnswer(false);
    pressF2();
    screen->stopTest();
    EXPECT_EQ(voice.log(), Log());
}

TEST_F(ReadAloudTest, EachArithmeticQuestionIsReadAsItShowsAndCutsOffTheOneBefore)
{
    // Level 5 asks every operation with the blank moving from box to box.
    saveTestsWith([](TestBank &bank) {
        bank.arithOps[5] = "+-x/";
        bank.arithSwitch[5] = {true, true};
    });
    startUp();
    screen->setSpeaker(voice);
    screen->setReadAloud(true);
    chooseLevel(5);
    screen->startTest();
    EXPECT_TRUE(shown("cmdSayAgain_Math"));
    EXPECT_EQ(voice.log(), Log({"stop", "say: " + problemOnScreen()}));

    std::set<std::string> blanksSaid;
    for (int answer = 0; answer < 8; ++answer) {
        voice.clearLog();
        typeAnswer(answer % 2 == 0);
        // Nothing is said between the answer and the next question, which
        // stops whatever was still being read.
        EXPECT_EQ(voice.log(), Log({"stop", "say: " + problemOnScreen()}));
        blanksSaid.insert(blank()->objectName().toStdString());
    }
    EXPECT_EQ(blanksSaid.size(), 3u) << "a blank in each of the three boxes was read";
    EXPECT_EQ(texts({"lblScoreRight", "lblScoreWrong"}), "4|4") << "judged as without the voice";

    // F2 and the button say the same question again, without cutting it first.
    voice.clearLog();
    const std::string asked = "say: " + problemOnScreen();
    pressF2();
    button("cmdSayAgain_Math")->click();
    EXPECT_EQ(voice.log(), Log({asked, asked}));
    EXPECT_EQ(QApplication::focusWidget(), blank()) << "the child is left typing";

    voice.clearLog();
    screen->stopTest();
    EXPECT_EQ(voice.log(), Log({"stop"}));
    pressF2();
    EXPECT_EQ(voice.log(), Log({"stop"})) << "between tests there is nothing to repeat";
}

TEST_F(ReadAloudTest, SpellingSaysTheClueAndTheWordWhoseSpellingIsRight)
{
    startUp();
    screen->setSpeaker(voice);
    screen->setReadAloud(true);
    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    // Levels K and 1 have a clue for each word, levels 2 and up the word alone;
    // Spelling also asks the neighbouring levels.
    for (const int level : {0, 4}) {
        chooseLevel(level);
        screen->startTest();
        EXPECT_TRUE(shown("cmdSayAgain_Multi"));
        for (int question = 0; question < 3; ++question) {
            ASSERT_EQ(voice.log().size(), 2u);
            const QString said = QString::fromStdString(voice.log().back());
            voice.clearLog();
            QString clue = shownText(*label("lblQuestion_Multi"));
            EXPECT_EQ(clue.isEmpty(), level == 4) << clue;
            if (!clue.isEmpty())
                clue = clue.chopped(1) + ". "; // the colon shown after it
            ASSERT_TRUE(said.startsWith("say: " + clue + "Spell: ")) << said;
            const QString word = said.mid(5 + clue.size() + 7).chopped(1);
            // The word said is the right one of the four spellings shown.
            QRadioButton *spelt = nullptr;
            for (int index = 0; index < 4; ++index)
                if (shownText(*answerButton(index)) == word)
                    spelt = answerButton(index);
            ASSERT_NE(spelt, nullptr) << word;
            QTest::mouseClick(spelt, Qt::LeftButton);
            QTest::keyClick(spelt, Qt::Key_Return);
            EXPECT_EQ(text("lblRightWrong"), "Right.") << word;
        }
        screen->stopTest();
        voice.clearLog();
    }
}

TEST_F(ReadAloudTest, OtherSubjectsSayTheQuestionAndTheAnswersInButtonOrder)
{
    startUp();
    screen->setSpeaker(voice);
    screen->setReadAloud(true);
    combo("cmbSubject")->setCurrentIndex(2); // Geography
    chooseLevel(3);
    screen->startTest();
    for (int question = 0; question < 4; ++question) {
        QStringList said = {shownText(*label("lblQuestion_Multi"))};
        for (int index = 0; index < 4; ++index)
            said << shownText(*answerButton(index)) + (index < 3 ? "." : "");
        said.last() = "Or " + said.last();
        std::string sentence = said.join(' ').toStdString();
        if (sentence.back() != '.')
            sentence += '.';
        EXPECT_EQ(voice.log(), Log({"stop", "say: " + sentence}));
        voice.clearLog();
        choose(question % 2 == 0);
    }
    EXPECT_EQ(texts({"lblScoreRight", "lblScoreWrong"}), "2|2");
}

TEST_F(ReadAloudTest, PractisedQuestionsAreReadAsTheyShowAndTheVoiceStopsWithTheRound)
{
    startUp();
    screen->setSpeaker(voice);
    screen->setReadAloud(true);
    screen->startTest();
    std::vector<std::string> missed;
    for (int question = 0; question < 2; ++question) {
        missed.push_back("say: " + problemOnScreen());
        typeAnswer(false);
    }
    screen->stopTest();
    voice.clearLog();

    button("cmdReview")->click();
    EXPECT_EQ(voice.log(), Log()) << "the review list is not read";
    button("cmdPractise")->click();
    EXPECT_TRUE(shown("cmdSayAgain_Math"));
    EXPECT_EQ(voice.log(), Log({"stop", missed[0]}));
    voice.clearLog();
    pressF2();
    EXPECT_EQ(voice.log(), Log({missed[0]}));

    // Missed again, the first comes back after the second; each is read as it
    // shows, cutting off the one before.
    voice.clearLog();
    typeAnswer(false);
    typeAnswer(true);
    EXPECT_EQ(voice.log(), Log({"stop", missed[1], "stop", missed[0]}));

    // The last right answer ends the round: the voice stops, F2 says nothing.
    voice.clearLog();
    typeAnswer(true);
    ASSERT_TRUE(shown("fraReview"));
    pressF2();
    EXPECT_EQ(voice.log(), Log({"stop"}));

    // A round stopped part way falls silent the same way.
    button("cmdPractise")->click();
    voice.clearLog();
    typeAnswer(true);
    EXPECT_EQ(voice.log(), Log({"stop", missed[1]}));
    voice.clearLog();
    button("cmdStopPractice")->click();
    pressF2();
    EXPECT_EQ(voice.log(), Log({"stop"}));
}
