// The main window on a small school laptop, where nothing may be cut off, and
// on a classroom projector, where the test grows with the window.
#include "MainScreenFixture_test.h"
#include "ui/Colours.h"

#include <QFrame>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <string>

namespace {

// The room a window has on the smallest screens in a school once a title bar
// and a panel are taken from them: 1024 x 600, and 1366 x 768 at 125 %.
const QSize SmallLaptops[] = {{1024, 540}, {1092, 554}};

// Built-in multiple-choice subjects, by their place in the default bank.
constexpr int Geography = 2;
constexpr int Science = 5;

} // namespace

class WindowSizeTest : public MainScreenTest {
protected:
    // The visible controls of the main panel that are not wholly inside the
    // window, or squeezed below the least size they need, joined by spaces.
    std::string cutOff() const
    {
        QCoreApplication::processEvents();
        QStringList names;
        const QRect window = screen->rect();
        for (const QWidget *widget : find<QFrame>("Frame1")->findChildren<QWidget *>()) {
            if (!widget->isVisible() || widget->objectName().isEmpty())
                continue;
            const QRect place(widget->mapTo(screen.get(), QPoint(0, 0)), widget->size());
            const QSize least = widget->minimumSizeHint().expandedTo(widget->minimumSize());
            if (!window.contains(place) || place.width() < least.width() ||
                place.height() < least.height())
                names << widget->objectName();
        }
        return names.join(' ').toStdString();
    }

    void resizeTo(const QSize &size)
    {
        screen->resize(size);
        QCoreApplication::processEvents();
    }
};

TEST_F(WindowSizeTest, TheWindowOpensInsideTheScreenAndNeverNeedsMoreThanItHas)
{
    startUp();
    // The test platform's screen is smaller than the window would like to be.
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(room.contains(screen->geometry()))
        << "window at " << screen->geometry().x() << "," << screen->geometry().y() << " size "
        << screen->width() << "x" << screen->height();
    const QSize least = screen->minimumSizeHint().expandedTo(screen->minimumSize());
    EXPECT_LE(least.width(), room.width());
    EXPECT_LE(least.height(), room.height());
}

TEST_F(WindowSizeTest, OnASmallLaptopNothingIsCutOffBetweenOrDuringTests)
{
    // The longest built-in question and answer, with answers as long beside it.
    saveTestsWith([](TestBank &bank) {
        const std::string answer = "Second law of thermodynamics";
        bank.subjects[Science].adjacentLevels = false;
        bank.limits[Science].lastQuestion[0] = 0;
        bank.questionBank[Science].items()[0][0] = {
            "Which map projection shows compass bearings as straight lines", answer, answer + "s",
            answer + "!", answer + "?"};
    });
    startUp();
    for (const QSize &size : SmallLaptops) {
        const std::string at = std::to_string(size.width()) + "x" + std::to_string(size.height());
        resizeTo(size);
        combo("cmbSubject")->setCurrentIndex(ArithmeticSubject);
        chooseLevel(5);
        EXPECT_EQ(cutOff(), "") << at << " before a test";

        screen->startTest();
        typeAnswer(true);
        EXPECT_EQ(cutOff(), "") << at << " Arithmetic";
        screen->stopTest();
        EXPECT_TRUE(shown("lblTestCompleted"));
        EXPECT_EQ(cutOff(), "") << at << " after the test";
        button("cmdReview")->click();
        EXPECT_EQ(cutOff(), "") << at << " review";
        button("cmdReviewBack")->click();

        combo("cmbSubject")->setCurrentIndex(Science);
        chooseLevel(0);
        screen->startTest();
        QTest::keyClick(answerButton(0), Qt::Key_Return);
        EXPECT_TRUE(shown("lblQuestion_Multi"));
        EXPECT_EQ(cutOff(), "") << at << " multiple choice";
        screen->stopTest();
    }
}

TEST_F(WindowSizeTest, OnAProjectorTheQuestionTheNumbersAndTheAnswersGrowWithTheWindow)
{
    startUp();
    const auto points = [this](const char *name) {
        return find<QWidget>(name)->font().pointSize();
    };
    const auto answerPoints = [&] {
        int least = 1000;
        for (int index = 0; index < 4; ++index)
            least = std::min(least, answerButton(index)->font().pointSize());
        return least;
    };
    resizeTo({1000, 700});
    screen->startTest();
    const int numberPoints = points("txtNum1");
    resizeTo({1920, 1050});
    for (const char *name : {"txtNum1", "lblOp", "txtNum2", "txtAnswer"})
        EXPECT_GE(points(name), numberPoints * 1.4) << name;
    const QLineEdit &number = *box("txtNum1");
    EXPECT_GE(number.width(), number.fontMetrics().horizontalAdvance("00000"))
        << "five digits fit the larger box";
    typeAnswer(true);
    EXPECT_EQ(cutOff(), "");
    screen->stopTest();

    combo("cmbSubject")->setCurrentIndex(Geography);
    screen->startTest();
    const int largeQuestion = points("lblQuestion_Multi");
    const int largeAnswers = answerPoints();
    EXPECT_EQ(cutOff(), "");
    QTest::mouseClick(answerButton(1), Qt::LeftButton);
    resizeTo({1000, 700});
    EXPECT_GE(largeQuestion, points("lblQuestion_Multi") * 1.4);
    EXPECT_GE(largeAnswers, answerPoints() * 1.4);
    EXPECT_TRUE(answerButton(1)->isChecked());
    EXPECT_EQ(textColour(answerButton(1)), bgrColor(Bgr::BrightGreen))
        << "the chosen answer keeps its mark as the window changes";
    EXPECT_EQ(points("txtNum1"), numberPoints) << "back to the usual size";
    screen->stopTest();
}
