#include "LevelButtons.h"

#include "ui/Accessibility.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>

LevelButtons::LevelButtons(QWidget *parent) : QWidget(parent), m_group(new QButtonGroup(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    for (int level = 0; level < LevelCount; ++level) {
        auto *option = new QRadioButton(QString::fromStdString(levelText(level)), this);
        option->setObjectName(QStringLiteral("optLevel%1").arg(level));
        option->setAccessibleName(QStringLiteral("Level ") + option->text());
        m_group->addButton(option, level);
        layout->addWidget(option);
        m_buttons[level] = option;
    }
    layout->addStretch(1);
    tabToCheckedButton(m_group->buttons());
    connect(m_group, &QButtonGroup::idClicked, this, &LevelButtons::levelClicked);
}

void LevelButtons::select(int level)
{
    if (level >= 0 && level < LevelCount)
        m_buttons[level]->setChecked(true);
}

int LevelButtons::selected() const
{
    return m_group->checkedId();
}

void LevelButtons::enableFor(const TestBank &bank, int subject)
{
    for (int level = 0; level < LevelCount; ++level)
        m_buttons[level]->setEnabled(levelHasQuestions(bank, subject, level));
    updateTabStop(m_group->buttons());

    const int checked = m_group->checkedId();
    if (checked < 0 || m_buttons[checked]->isEnabled())
        return;
    for (int level = LevelCount - 1; level >= 0; --level) {
        if (m_buttons[level]->isEnabled()) {
            m_buttons[level]->setChecked(true);
            return;
        }
    }
}
