#include "ReviewPanel.h"

#include "ReviewLines.h"
#include "ReviewWidgets.h"
#include "TestRecord.h"
#include "ui/Colours.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

using namespace ReviewWidgets;

namespace {

constexpr int MarkSize = 28;

// The main screen's colours: blue for right, red for wrong, as its last answer
// shows them; grey for a question the test ended on.
QColor markColour(ReviewMark mark)
{
    switch (mark) {
    case ReviewMark::Missed:
        return bgrColor(Bgr::Red);
    case ReviewMark::Right:
        return bgrColor(Bgr::Blue);
    case ReviewMark::NotAnswered:
        break;
    }
    return QColor(0x60, 0x60, 0x60);
}

// A cross, a tick or a dash drawn in the line's colour: the mark still shows
// where colours are hard to tell apart, and needs no font to have the sign.
QIcon markIcon(ReviewMark mark)
{
    QPixmap pixmap(MarkSize, MarkSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(markColour(mark), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath path;
    switch (mark) {
    case ReviewMark::Missed:
        path.moveTo(6, 6);
        path.lineTo(22, 22);
        path.moveTo(22, 6);
        path.lineTo(6, 22);
        break;
    case ReviewMark::Right:
        path.moveTo(5, 15);
        path.lineTo(11, 21);
        path.lineTo(23, 7);
        break;
    case ReviewMark::NotAnswered:
        path.moveTo(7, 14);
        path.lineTo(21, 14);
        break;
    }
    painter.drawPath(path);
    painter.end();
    QIcon icon;
    // The same mark on the line the keyboard is on, not a darkened one.
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Active})
        icon.addPixmap(pixmap, mode);
    return icon;
}

// Room for a good number of lines where the screen has it, so that a test's
// questions are seen at a glance rather than through a slot; less where it
// has not.
class ReviewList : public QListWidget {
public:
    QSize sizeHint() const override
    {
        constexpr int PreferredLines = 8;
        const int line = std::max(fontMetrics().height(), MarkSize) + 2 * spacing() + 4;
        return {QListWidget::sizeHint().width(), PreferredLines * line + 2 * frameWidth()};
    }
};

// The line the keyboard is on keeps its red or blue: the style would draw it
// in the selection's text colour, and a missed line would no longer look missed.
class MarkedLineDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QVariant foreground = index.data(Qt::ForegroundRole);
        if (foreground.canConvert<QBrush>())
            option->palette.setBrush(QPalette::HighlightedText, foreground.value<QBrush>());
    }
};

} // namespace

ReviewPanel::ReviewPanel(QWidget *parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("fraReview"));
    setFrameShape(QFrame::StyledPanel);

    m_heading = new QLabel;
    m_heading->setObjectName(QStringLiteral("lblReviewHeading"));
    m_heading->setFont(arial(LinePoints, true));
    m_heading->setWordWrap(true);
    m_heading->setTextFormat(Qt::PlainText);

    m_list = new ReviewList;
    m_list->setObjectName(QStringLiteral("lstReview"));
    m_list->setAccessibleName(QStringLiteral("Questions of the test"));
    m_list->setFont(arial(LinePoints));
    m_list->setIconSize(QSize(MarkSize, MarkSize));
    m_list->setSpacing(3);
    // Long questions wrap inside the panel instead of running off to the side.
    m_list->setWordWrap(true);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setItemDelegate(new MarkedLineDelegate(m_list));
    // The line the keyboard is on stands out on a pale ground that keeps the
    // red and blue easy to read.
    QPalette colours = m_list->palette();
    colours.setColor(QPalette::Highlight, QColor(0xFF, 0xF0, 0xA8));
    m_list->setPalette(colours);

    m_practise = button("cmdPractise", QStringLiteral("Practise missed"));
    m_practiseWeak = button("cmdPractiseWeak", QStringLiteral("Practise weak facts"));
    m_practiseWeak->setAccessibleDescription(
        QStringLiteral("The facts not known yet first, then those being learnt, then new ones "
                       "of the level, without a clock"));
    m_practiseWeak->hide();
    m_back = button("cmdReviewBack", QStringLiteral("Back"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_practise);
    buttons->addWidget(m_practiseWeak);
    buttons->addStretch();
    buttons->addWidget(m_back);
    for (QPushButton *push : {m_practise, m_practiseWeak, m_back})
        push->setMinimumWidth(180);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(12);
    layout->addWidget(m_heading);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    hide();
}

void ReviewPanel::showRecord(const TestRecord &record, const QString &heading, bool praise)
{
    QPalette headingColours = m_heading->palette();
    headingColours.setColor(QPalette::WindowText,
                            praise ? bgrColor(Bgr::Green) : palette().color(QPalette::WindowText));
    m_heading->setPalette(headingColours);
    m_heading->setText(heading);
    m_list->setAccessibleDescription(heading);
    m_list->clear();
    for (const ReviewLine &line : reviewLines(record)) {
        auto *item =
            new QListWidgetItem(markIcon(line.mark), QString::fromStdString(line.text), m_list);
        item->setForeground(markColour(line.mark));
        item->setData(Qt::AccessibleTextRole, QString::fromStdString(line.spoken));
        item->setFont(arial(LinePoints, line.mark == ReviewMark::Missed));
    }
    m_list->setCurrentRow(0);
    m_practise->setEnabled(record.missedCount() > 0);
}

void ReviewPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        m_back->click();
        return;
    }
    QFrame::keyPressEvent(event);
}
