#include "core/HistoryQueries.h"

#include "core/HistoryRoster.h"
#include "core/HistoryStore.h"
#include "core/HistorySubjects.h"
#include "core/RecentFacts.h"
#include "core/Sqlite.h"

#include <algorithm>
#include <limits>
#include <string>

namespace {

constexpr int RanOut = 0;
constexpr int Stopped = 1;

TestEnding endingOf(std::int64_t stored)
{
    return stored == RanOut    ? TestEnding::RanOut
           : stored == Stopped ? TestEnding::Stopped
                               : TestEnding::Interrupted;
}

// The rows of a query that counts (question id, asked, missed), with the
// question's texts.
std::vector<MissedQuestion> readMissed(SqliteStatement &rows)
{
    std::vector<MissedQuestion> missed;
    while (rows.step()) {
        missed.push_back({std::string(rows.text(0)), std::string(rows.text(1)),
                          static_cast<int>(rows.integer(2)), static_cast<int>(rows.integer(3))});
    }
    return missed;
}

} // namespace

HistoryQueries::HistoryQueries(HistoryStore &store, HistoryRoster &roster,
                               HistorySubjects &subjects)
    : m_store(store), m_roster(roster), m_subjects(subjects)
{
}

std::vector<TestSummary> HistoryQueries::tests(int student, int subject, int level,
                                               const DateRange &range)
{
    std::vector<TestSummary> tests;
    const std::int64_t studentId = m_roster.idAt(student);
    const std::int64_t subjectId = m_subjects.idAt(subject);
    if (studentId == 0 || subjectId == 0)
        return tests;
    m_store.read([&](SqliteDatabase &db) {
        SqliteStatement &rows = db.cached(
            "SELECT started, level, seconds, score, rights, wrongs, ending, practice FROM test "
            "WHERE student_id = ? AND subject_id = ? AND started >= ? AND started < ? "
            "AND level = ? AND ending IS NOT NULL ORDER BY started, id");
        rows.bindAll(studentId, subjectId,
                     range.from.value_or(std::numeric_limits<LocalSeconds>::min()),
                     range.until.value_or(std::numeric_limits<LocalSeconds>::max()), level);
        while (rows.step()) {
            tests.push_back({rows.integer(0), static_cast<int>(rows.integer(1)),
                             static_cast<int>(rows.integer(2)), static_cast<int>(rows.integer(3)),
                             static_cast<int>(rows.integer(4)), static_cast<int>(rows.integer(5)),
                             endingOf(rows.integer(6)), rows.integer(7) != 0});
        }
    });
    return tests;
}

std::vector<ArithmeticFact> HistoryQueries::facts(int student)
{
    std::vector<ArithmeticFact> facts;
    const std::int64_t studentId = m_roster.idAt(student);
    if (studentId != 0)
        m_store.read([&](SqliteDatabase &db) { facts = readRecentFacts(db, studentId); });
    return facts;
}

std::vector<MissedQuestion> HistoryQueries::missedQuestions(int student, int subject,
                                                            std::optional<int> level, int limit)
{
    std::vector<MissedQuestion> missed;
    const std::int64_t studentId = m_roster.idAt(student);
    const std::int64_t subjectId = m_subjects.idAt(subject);
    if (studentId == 0 || subjectId == 0)
        return missed;
    m_store.read([&](SqliteDatabase &db) {
        SqliteStatement &rows = db.cached(
            "SELECT q.question, q.right_choice, m.asked, m.missed FROM ("
            "  SELECT a.question_id, count(*) AS asked, count(*) - sum(a.correct) AS missed"
            "  FROM test t JOIN answer a ON a.test_id = t.id"
            "  WHERE t.student_id = ?1 AND t.subject_id = ?2 AND (?3 IS NULL OR t.level = ?3)"
            "    AND a.question_id IS NOT NULL"
            "  GROUP BY a.question_id) m "
            "JOIN choice_question q ON q.id = m.question_id WHERE m.missed > 0 "
            "ORDER BY m.missed DESC, m.asked, q.question LIMIT ?4");
        rows.bindAll(studentId, subjectId, level, limit);
        missed = readMissed(rows);
    });
    return missed;
}

std::vector<MissedQuestion> HistoryQueries::classMissedQuestions(int subject, int level, int limit)
{
    std::vector<MissedQuestion> missed;
    const std::int64_t subjectId = m_subjects.idAt(subject);
    if (subjectId == 0)
        return missed;
    m_store.read([&](SqliteDatabase &db) {
        SqliteStatement &rows = db.cached(
            "SELECT q.question, q.right_choice, m.asked, m.missed FROM ("
            "  SELECT a.question_id, count(*) AS asked, count(*) - sum(a.correct) AS missed"
            "  FROM test t JOIN student s ON s.id = t.student_id"
            "  JOIN answer a ON a.test_id = t.id"
            "  WHERE t.subject_id = ?1 AND t.level = ?2 AND s.position IS NOT NULL"
            "    AND a.question_id IS NOT NULL"
            "  GROUP BY a.question_id) m "
            "JOIN choice_question q ON q.id = m.question_id WHERE m.missed > 0 "
            "ORDER BY m.missed DESC, m.asked, q.question LIMIT ?3");
        rows.bindAll(subjectId, level, limit);
        missed = readMissed(rows);
    });
    return missed;
}

std::vector<SubjectScores> HistoryQueries::recentScores(int student)
{
    std::vector<SubjectScores> scores;
    const std::int64_t studentId = m_roster.idAt(student);
    if (studentId == 0)
        return scores;
    m_subjects.followStore();
    m_store.read([&](SqliteDatabase &db) {
        // Newest first within each subject, so that the first rows are the ones kept.
        SqliteStatement &rows =
            db.cached("SELECT s.position, t.score, t.started FROM test t "
                      "JOIN subject s ON s.id = t.subject_id "
                      "WHERE t.student_id = ? AND t.practice = 0 AND t.ending IN (0, 1) "
                      "AND s.position IS NOT NULL ORDER BY s.position, t.started DESC, t.id DESC");
        rows.bindAll(studentId);
        while (rows.step()) {
            const int subject = static_cast<int>(rows.integer(0));
            if (scores.empty() || scores.back().subject != subject)
                scores.push_back({subject, {}, rows.integer(2)});
            if (scores.back().scores.size() < std::size_t(RecentScoresPerSubject))
                scores.back().scores.push_back(static_cast<int>(rows.integer(1)));
        }
    });
    for (SubjectScores &subject : scores)
        std::reverse(subject.scores.begin(), subject.scores.end());
    return scores;
}
