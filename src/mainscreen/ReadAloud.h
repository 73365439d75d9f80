// Reading a running test's questions aloud for a child who cannot read them
// yet: the Read aloud box, the Say it again buttons and F2. Nothing here waits
// for the voice, so the clock, the judging and the next question never do.
#pragma once

#include <QObject>

#include <array>
#include <memory>
#include <string>

class QCheckBox;
class QPushButton;
class QWidget;
class Speaker;

class ReadAloud : public QObject {
    Q_OBJECT
public:
    // F2 works anywhere in form. Until a speaker is set there is no voice.
    ReadAloud(QCheckBox &box, const std::array<QPushButton *, 2> &sayAgainButtons, QWidget &form);
    ~ReadAloud() override;

    // The voice to read with. The box can be ticked only while it can be
    // heard; otherwise it is off, and its tooltip says why.
    void setSpeaker(Speaker &speaker);
    // Ticks or clears the box; it stays clear where no voice can be heard.
    void setOn(bool on);

    // A new question is on the screen: what is still being said of the last
    // one stops, and this one is read.
    void askQuestion(const std::string &sentence);
    // The question on the screen, again.
    void repeatQuestion();
    // The test is over: the voice falls silent and F2 has nothing to repeat.
    void endTest();

private:
    bool isOn() const;
    void showSayAgain();

    QCheckBox &m_box;
    std::array<QPushButton *, 2> m_sayAgainButtons;
    std::unique_ptr<Speaker> m_noVoice;
    Speaker *m_speaker = nullptr;
    // The question being asked; empty between tests.
    std::string m_question;
};
