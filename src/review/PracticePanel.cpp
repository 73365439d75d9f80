#include "PracticePanel.h"

#include "ReviewWidgets.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace ReviewWidgets;

PracticePanel::PracticePanel(QWidget *parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("fraPractice"));
    setFrameShape(QFrame::StyledPanel);

    auto *title = new QLabel(QStringLiteral("Practice"));
    title->setFont(arial(LinePoints, true));
    title->setAlignment(Qt::AlignCenter);
    auto *untimed = new QLabel(QStringLiteral("No clock, no score"));
    untimed->setFont(arial(13));
    untimed->setAlignment(Qt::AlignCenter);
    m_progress = new QLabel;
    m_progress->setObjectName(QStringLiteral("lblPracticeLeft"));
    m_progress->setFont(arial(LinePoints, true));
    m_progress->setAlignment(Qt::AlignCenter);
    m_progress->setTextFormat(Qt::PlainText);
    m_stop = button("cmdStopPractice", QStringLiteral("Stop Practice"));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(8);
    layout->addWidget(title);
    layout->addWidget(untimed);
    layout->addWidget(m_progress);
    layout->addWidget(m_stop);
    hide();
}

void PracticePanel::showProgress(const QString &text)
{
    m_progress->setText(text);
}
