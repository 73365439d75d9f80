// The review after a test, shown on the main screen in the place of the start
// panel: how the test went, every question with its right answer (the missed
// ones first, in red with a cross; the right ones in blue with a tick), and
// the way to a practice round of the missed ones, or of the weak facts.
#pragma once

#include <QFrame>

class QLabel;
class QListWidget;
class QPushButton;
class TestRecord;

class ReviewPanel : public QFrame {
public:
    explicit ReviewPanel(QWidget *parent = nullptr);

    // Fills the list from the test's questions under the heading, which a
    // screen reader also reads when the list takes the focus. Praise is
    // headed in the green of a high score.
    void showRecord(const TestRecord &record, const QString &heading, bool praise = false);

    QListWidget *list() const { return m_list; }
    QPushButton *practiseButton() const { return m_practise; }
    // Shown by the screen when the history can choose the facts (an Arithmetic test).
    QPushButton *practiseWeakButton() const { return m_practiseWeak; }
    QPushButton *backButton() const { return m_back; }

protected:
    // Escape goes back, as Back does.
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLabel *m_heading = nullptr;
    QListWidget *m_list = nullptr;
    QPushButton *m_practise = nullptr;
    QPushButton *m_practiseWeak = nullptr;
    QPushButton *m_back = nullptr;
};
