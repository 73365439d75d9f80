#include "Session.h"

#include "ClassHistory.h"
#include "Prompt.h"
#include "core/DataFileBackups.h"
#include "core/History.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <utility>

namespace {

const QString Title = QStringLiteral("Tavrino");

bool reported(const std::optional<FileError> &error, Prompt &prompt, QWidget *parent)
{
    if (!error)
        return true;
    prompt.stop(parent, Title, QString::fromStdString(error->message()));
    return false;
}

HistoryClock &computerClock()
{
    static SystemClock clock;
    return clock;
}

// A backup that could not be made never stops the save or the action it came
// before; the teacher hears of it once, not at every save.
void tellBackup(Session &session, const BackupOutcome &outcome, DataFile file, QWidget *parent)
{
    if (!outcome.failed()) {
        if (outcome.status == BackupOutcome::Status::Made)
            session.backupFailureTold = false;
        return;
    }
    if (session.backupFailureTold)
        return;
    session.backupFailureTold = true;
    const QString label = QString::fromStdString(session.backups.source(file).label);
    session.prompt.stop(
        parent, Title,
        QStringLiteral("Tavrino could not make a backup copy of the %1 file: %2\rYour work goes "
                       "on and is saved as usual; only this copy is missing. Tavrino will not "
                       "mention failed backups again until one works.")
            .arg(label, QString::fromStdString(outcome.problem)));
}

} // namespace

Session::Session(DataPaths dataPaths, Prompt &userPrompt)
    : Session(std::move(dataPaths), userPrompt, computerClock())
{
}

Session::Session(DataPaths dataPaths, Prompt &userPrompt, HistoryClock &historyClock)
    : paths(std::move(dataPaths)), prompt(userPrompt), backups(paths.backupsDir, historyClock),
      clock(historyClock)
{
    addDataFileSources(backups, paths);
}

Session::~Session() = default;

bool Session::saveTests(QWidget *parent)
{
    if (keepTestsFile) {
        prompt.stop(parent, Title,
                    QStringLiteral("The tests were not saved: the file \"%1\" could not be used "
                                   "when Tavrino started and is kept as it is.")
                        .arg(QString::fromStdString(paths.testsPath.string())));
        return false;
    }
    tellBackup(*this, backups.backUpBeforeFirstSave(DataFile::Tests), DataFile::Tests, parent);
    return reported(::saveTests(bank, paths.testsPath), prompt, parent);
}

bool Session::saveStudents(QWidget *parent)
{
    tellBackup(*this, backups.backUpBeforeFirstSave(DataFile::Students), DataFile::Students,
               parent);
    if (!reported(::saveStudents(records, paths.studentsPath), prompt, parent))
        return false;
    if (history)
        history->roster().rosterSaved(studentNames(records));
    return true;
}

void Session::backUpBeforeLoss(std::initializer_list<DataFile> files, QWidget *parent)
{
    for (const DataFile file : files)
        if (backups.keeps(file))
            tellBackup(*this, backups.backUp(file), file, parent);
}

bool Session::restoreBackup(const Backup &backup, QWidget *parent)
{
    // Read whole first: a copy that does not load is never put in place.
    StudentRecords roster;
    TestBank restoredBank;
    LoadResult read;
    switch (backup.file) {
    case DataFile::Students:
        read = readStudentsCopy(backup.path, bank, roster);
        break;
    case DataFile::Tests:
        read = readTestsCopy(backup.path, restoredBank);
        break;
    case DataFile::History:
        if (const BackupSummary summary = backups.summarise(backup); !summary.readable)
            read = {LoadResult::Status::Failed,
                    FileError{FileError::Kind::Unreadable, backup.path.string(), summary.text, {}}};
        break;
    }
    if (!read.ok()) {
        const QString problem = read.error ? QString::fromStdString(read.error->message())
                                           : QStringLiteral("It could not be read.");
        prompt.stop(parent, Title,
                    QStringLiteral("This backup cannot be restored. %1").arg(problem));
        return false;
    }
    if (const std::optional<std::string> problem = backups.restore(backup)) {
        prompt.stop(parent, Title, QString::fromStdString(*problem));
        return false;
    }
    // The restored file is matched to the history as one from another computer
    // would be: by name, then by place.
    switch (backup.file) {
    case DataFile::Students:
        adoptRoster(records, std::move(roster));
        if (history)
            history->roster().matchRoster(studentNames(records));
        break;
    case DataFile::Tests:
        adoptBank(bank, std::move(restoredBank), records);
        if (history)
            history->subjects().matchSubjects(subjectNames(bank));
        // A file that could not be used at start-up has been backed up and replaced.
        keepTestsFile = false;
        break;
    case DataFile::History:
        // The open history now holds the copy and has matched it to the roster
        // and the subjects in memory; the two files stay as they are.
        break;
    }
    return true;
}
