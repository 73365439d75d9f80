// The row of level buttons K and 1..12, of which only the levels that can give
// questions in the current subject are enabled.
#pragma once

#include "core/TestBank.h"

#include <QWidget>

#include <array>

class QButtonGroup;
class QRadioButton;

class LevelButtons : public QWidget {
    Q_OBJECT
public:
    explicit LevelButtons(QWidget *parent = nullptr);

    void select(int level);
    // The level whose button is checked; -1 for none.
    int selected() const;
    // Enables the levels of the subject that have questions. When the selected
    // level is disabled, the highest enabled one is selected instead.
    void enableFor(const TestBank &bank, int subject);

signals:
    // The user chose a level; selecting one from code does not emit this.
    void levelClicked(int level);

private:
    std::array<QRadioButton *, LevelCount> m_buttons{};
    QButtonGroup *m_group = nullptr;
};
