#include "ReadAloud.h"

#include "speech/Speaker.h"

#include <QCheckBox>
#include <QKeySequence>
#include <QPushButton>
#include <QShortcut>
#include <QWidget>

namespace {

// The speaker of a program started without one.
class NoVoice : public Speaker {
public:
    void say(const std::string &) override {}
    void stop() override {}
    std::string unavailableReason() const override { return "No voice has been set up."; }
};

} // namespace

ReadAloud::ReadAloud(QCheckBox &box, const std::array<QPushButton *, 2> &sayAgainButtons,
                     QWidget &form)
    : m_box(box), m_sayAgainButtons(sayAgainButtons), m_noVoice(std::make_unique<NoVoice>())
{
    setSpeaker(*m_noVoice);
    connect(&m_box, &QCheckBox::toggled, this, &ReadAloud::showSayAgain);
    for (QPushButton *button : m_sayAgainButtons)
        connect(button, &QPushButton::clicked, this, &ReadAloud::repeatQuestion);
    auto *again = new QShortcut(QKeySequence(Qt::Key_F2), &form);
    connect(again, &QShortcut::activated, this, &ReadAloud::repeatQuestion);
    showSayAgain();
}

ReadAloud::~ReadAloud() = default;

void ReadAloud::setSpeaker(Speaker &speaker)
{
    m_speaker = &speaker;
    const QString reason = QString::fromStdString(speaker.unavailableReason());
    m_box.setEnabled(reason.isEmpty());
    if (!reason.isEmpty())
        m_box.setChecked(false);
    m_box.setToolTip(reason.isEmpty()
                         ? QStringLiteral("Each question is read aloud as it shows; F2 or "
                                          "\"Say it again\" reads it once more.")
                         : reason);
    m_box.setAccessibleDescription(m_box.toolTip());
}

void ReadAloud::setOn(bool on)
{
    m_box.setChecked(on && m_box.isEnabled());
}

bool ReadAloud::isOn() const
{
    return m_box.isChecked() && m_box.isEnabled();
}

void ReadAloud::showSayAgain()
{
    // They sit in the question panels, which show only during a test.
    for (QPushButton *button : m_sayAgainButtons)
        button->setVisible(isOn());
}

// No "Right!" or "Wrong." is said after an answer. The next question shows at
// once: said first, the word would hold up the question for the child who waits
// to hear it; cut off by it, it would be noise. The verdict stays on the screen.
void ReadAloud::askQuestion(const std::string &sentence)
{
    m_question = sentence;
    if (!isOn())
        return;
    m_speaker->stop();
    m_speaker->say(m_question);
}

void ReadAloud::repeatQuestion()
{
    if (isOn() && !m_question.empty())
        m_speaker->say(m_question);
}

void ReadAloud::endTest()
{
    m_question.clear();
    if (isOn())
        m_speaker->stop();
}
