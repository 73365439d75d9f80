// What stands beside a practice round on the main screen, where the clock and
// the score stand during a test: that this is practice, how many questions are
// left, and the button that stops it.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

class PracticePanel : public QFrame {
public:
    explicit PracticePanel(QWidget *parent = nullptr);

    // "2 questions to go".
    void showProgress(const QString &text);
    QPushButton *stopButton() const { return m_stop; }

private:
    QLabel *m_progress = nullptr;
    QPushButton *m_stop = nullptr;
};
