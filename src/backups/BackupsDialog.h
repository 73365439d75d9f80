// The Backups dialog: every backup of the data files, newest first, with what
// each holds, and Restore to put the chosen one back in its file's place.
#pragma once

#include "core/Backups.h"

#include <QDialog>

#include <optional>
#include <vector>

class QLabel;
class QPushButton;
class QTimer;
class QTreeWidget;
struct Session;

class BackupsDialog : public QDialog {
    Q_OBJECT
public:
    // Lists the backups at once; what each holds is read afterwards, one copy
    // at a time, so that the dialog opens without waiting for large files.
    explicit BackupsDialog(Session &session, QWidget *parent = nullptr);
    ~BackupsDialog() override;

    // What the user does; public so that tests can drive it.
    // The selected backup: what it holds is read now if it was not yet, and
    // Restore is offered only for a copy that reads.
    void showSelected();
    // Asks, naming the date, then restores the selected backup.
    void restoreSelected();

    // Reads what the next backup not yet read holds; false once all are read.
    bool readNextSummary();

signals:
    // The file was restored: the bank or the roster in memory is the restored one.
    void restored(DataFile file);

private:
    void fillList();
    void setSummary(int row, const BackupSummary &summary);
    int selectedRow() const;

    Session &m_session;
    std::vector<Backup> m_backups;
    std::vector<std::optional<BackupSummary>> m_summaries;
    QTreeWidget *m_list = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_restoreButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QTimer *m_reader = nullptr;
};
