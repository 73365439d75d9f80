#include "ClassHistory.h"

#include "Prompt.h"
#include "Session.h"
#include "core/History.h"
#include "core/HistoryBackups.h"

#include <optional>

void openHistory(Session &session)
{
    session.history = std::make_unique<History>(session.paths.dataDir, session.clock);
    addHistorySource(session.backups, *session.history, session.paths.dataDir);
    session.history->subjects().matchSubjects(subjectNames(session.bank));
    // At start-up the roster is read later, by the Students screen, which matches it then.
    if (!session.records.students.empty())
        session.history->roster().matchRoster(studentNames(session.records));
}

void tellHistoryTrouble(Session &session, QWidget *parent)
{
    if (!session.history)
        return;
    while (const std::optional<std::string> message = session.history->takeMessage())
        session.prompt.stop(parent, QStringLiteral("Tavrino"), QString::fromStdString(*message));
}

std::vector<std::string> studentNames(const StudentRecords &records)
{
    std::vector<std::string> names;
    names.reserve(records.students.size());
    for (const Student &student : records.students)
        names.push_back(student.name);
    return names;
}

std::vector<std::string> subjectNames(const TestBank &bank)
{
    std::vector<std::string> names;
    names.reserve(bank.subjects.size());
    for (const Subject &subject : bank.subjects)
        names.push_back(subject.name);
    return names;
}

HistoryRoster *historyRoster(Session &session)
{
    return session.history ? &session.history->roster() : nullptr;
}

HistorySubjects *historySubjects(Session &session)
{
    return session.history ? &session.history->subjects() : nullptr;
}
