#include "BackupsDialog.h"

#include "core/LocalTime.h"
#include "ui/Prompt.h"
#include "ui/ScreenFit.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QDate>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { MadeColumn, FileColumn, HoldsColumn };

constexpr QSize OpeningSize(780, 460);

QDateTime localDateTime(LocalSeconds seconds)
{
    const CivilTime t = toCivilTime(seconds);
    return {QDate(t.year, t.month, t.day), QTime(t.hour, t.minute, t.second)};
}

// "Tue 24 Nov 2026  10:15:03" in the list.
QString listedTime(LocalSeconds seconds)
{
    return QLocale(QLocale::English)
        .toString(localDateTime(seconds), QStringLiteral("ddd d MMM yyyy   HH:mm:ss"));
}

// "Tuesday 24 November 2026 at 10:15:03" in sentences.
QString spokenTime(LocalSeconds seconds)
{
    return QLocale(QLocale::English)
        .toString(localDateTime(seconds), QStringLiteral("dddd d MMMM yyyy 'at' HH:mm:ss"));
}

} // namespace

BackupsDialog::BackupsDialog(Session &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setObjectName(QStringLiteral("frmBackups"));
    setWindowTitle(QStringLiteral("Backups"));
    setModal(true);

    auto *intro = new QLabel(
        QStringLiteral("Tavrino keeps dated copies of the Students and Tests files and of the "
                       "History of answers in the folder \"%1\". Choose one and click Restore "
                       "to put it back in its file's place; the file as it is now is kept as a "
                       "backup first.")
            .arg(QString::fromStdString(m_session.paths.backupsDir.string())),
        this);
    intro->setWordWrap(true);
    intro->setTextInteractionFlags(Qt::TextSelectableByMouse);

    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstBackups"));
    m_list->setAccessibleName(QStringLiteral("Backups"));
    m_list->setHeaderLabels(
        {QStringLiteral("Made"), QStringLiteral("File"), QStringLiteral("What it holds")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(true);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &BackupsDialog::showSelected);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_status->setWordWrap(true);

    m_restoreButton = new QPushButton(QStringLiteral("&Restore"), this);
    m_restoreButton->setObjectName(QStringLiteral("cmdRestore"));
    m_restoreButton->setAccessibleName(QStringLiteral("Restore"));
    m_restoreButton->setAutoDefault(false);
    m_closeButton = new QPushButton(QStringLiteral("Close"), this);
    m_closeButton->setObjectName(QStringLiteral("cmdClose"));
    // Enter closes; restoring takes a click or Alt+R, and a confirmation.
    m_closeButton->setDefault(true);
    for (QPushButton *button : {m_restoreButton, m_closeButton})
        button->setMinimumSize(100, 30);
    connect(m_restoreButton, &QPushButton::clicked, this, &BackupsDialog::restoreSelected);
    connect(m_closeButton, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_status, 1);
    buttons->addWidget(m_restoreButton, 0, Qt::AlignBottom);
    buttons->addWidget(m_closeButton, 0, Qt::AlignBottom);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(10);
    layout->addWidget(intro);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    m_reader = new QTimer(this);
    m_reader->setInterval(0);
    connect(m_reader, &QTimer::timeout, this, [this] {
        if (!readNextSummary())
            m_reader->stop();
    });

    fillList();
    fitInto(*this, OpeningSize, roomOnScreen(*this));
    m_list->setFocus();
}

BackupsDialog::~BackupsDialog() = default;

void BackupsDialog::fillList()
{
    // The copy that was selected stays selected; otherwise the newest is.
    const std::filesystem::path was =
        selectedRow() >= 0 ? m_backups[selectedRow()].path : std::filesystem::path();
    m_backups = m_session.backups.list();
    m_summaries.assign(m_backups.size(), std::nullopt);

    const QSignalBlocker quiet(m_list);
    m_list->clear();
    int current = 0;
    for (const Backup &backup : m_backups) {
        auto *item = new QTreeWidgetItem(m_list);
        item->setText(MadeColumn, listedTime(backup.made));
        item->setText(FileColumn,
                      QString::fromStdString(m_session.backups.source(backup.file).label));
        item->setText(HoldsColumn, QStringLiteral("\u2026"));
        if (backup.path == was)
            current = m_list->topLevelItemCount() - 1;
    }
    for (const int column : {MadeColumn, FileColumn})
        m_list->resizeColumnToContents(column);
    if (!m_backups.empty()) {
        m_list->setCurrentItem(m_list->topLevelItem(current));
        m_reader->start();
    }
    showSelected();
}

int BackupsDialog::selectedRow() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row >= 0 && row < static_cast<int>(m_backups.size()) ? row : -1;
}

void BackupsDialog::setSummary(int row, const BackupSummary &summary)
{
    m_summaries[row] = summary;
    QTreeWidgetItem *item = m_list->topLevelItem(row);
    item->setText(HoldsColumn, summary.readable ? QString::fromStdString(summary.text)
                                                : QStringLiteral("Damaged: it cannot be restored"));
    item->setToolTip(HoldsColumn,
                     summary.readable ? QString() : QString::fromStdString(summary.text));
}

bool BackupsDialog::readNextSummary()
{
    for (std::size_t row = 0; row < m_backups.size(); ++row) {
        if (!m_summaries[row]) {
            setSummary(static_cast<int>(row), m_session.backups.summarise(m_backups[row]));
            return true;
        }
    }
    return false;
}

void BackupsDialog::showSelected()
{
    const int row = selectedRow();
    if (row < 0) {
        m_restoreButton->setEnabled(false);
        m_status->setText(m_backups.empty()
                              ? QStringLiteral("There are no backups yet. Tavrino makes one before "
                                               "the first save of each file in a run and before "
                                               "every action that removes results, students, "
                                               "subjects or questions.")
                              : QString());
        return;
    }
    if (!m_summaries[row]) {
        const WaitCursor wait;
        setSummary(row, m_session.backups.summarise(m_backups[row]));
    }
    const BackupSummary &summary = *m_summaries[row];
    m_restoreButton->setEnabled(summary.readable);
    m_status->setText(summary.readable ? QString()
                                       : QStringLiteral("This backup cannot be restored. %1")
                                             .arg(QString::fromStdString(summary.text)));
}

void BackupsDialog::restoreSelected()
{
    const int row = selectedRow();
    if (row < 0 || !m_restoreButton->isEnabled())
        return;
    const Backup chosen = m_backups[row];
    const QString label = QString::fromStdString(m_session.backups.source(chosen.file).label);
    const bool confirmed = m_session.prompt.confirm(
        this, QStringLiteral("Confirm Restore"),
        QStringLiteral("Are you sure you want to Restore the %1 file as it was on %2?\rThe %1 "
                       "file as it is now is kept as a backup first.")
            .arg(label, spokenTime(chosen.made)));
    // A desktop gives the keyboard back to the dialog when a question closes;
    // a bare X session (a kiosk) does not.
    activateWindow();
    if (!confirmed)
        return;
    bool done = false;
    {
        const WaitCursor wait;
        done = m_session.restoreBackup(chosen, this);
    }
    activateWindow();
    // The copy of the file as it was is a new backup at the top of the list.
    fillList();
    if (!done)
        return;
    m_status->setText(QStringLiteral("The %1 file is now as it was on %2. The file as it was "
                                     "before is the newest backup.")
                          .arg(label, spokenTime(chosen.made)));
    emit restored(chosen.file);
}
