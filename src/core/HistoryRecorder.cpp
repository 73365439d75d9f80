#include "core/HistoryRecorder.h"

#include "core/ChoiceQuestions.h"
#include "core/HistoryClock.h"
#include "core/HistoryRoster.h"
#include "core/HistoryStore.h"
#include "core/HistorySubjects.h"
#include "core/RecentFacts.h"
#include "core/Sqlite.h"
#include "core/TestBank.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr int Interrupted = 2;

// The text typed, or the integer it plainly writes ("56", "-3", not "056",
// "+3" or " 3"), which takes less room and reads back as the same text.
bool isPlainInteger(std::string_view text)
{
    if (!text.empty() && text.front() == '-')
        text.remove_prefix(1);
    if (text.empty() || text.size() > 18 || (text.front() == '0' && text.size() > 1))
        return false;
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

HistoryRecorder::HistoryRecorder(HistoryStore &store, HistoryRoster &roster,
                                 HistorySubjects &subjects, HistoryClock &clock)
    : m_store(store), m_roster(roster), m_subjects(subjects), m_clock(clock),
      m_generation(store.generation())
{
}

bool HistoryRecorder::followStore()
{
    if (m_generation != m_store.generation()) {
        // The test being recorded went with the database that was replaced.
        m_generation = m_store.generation();
        m_testId = 0;
        m_store.holdCheckpoints(false);
    }
    return m_testId != 0;
}

void HistoryRecorder::beginTest(const TestStart &start)
{
    if (start.level < 0 || start.level >= LevelCount)
        return;
    followStore();
    m_roster.followStore();
    m_subjects.followStore();
    const std::int64_t previous = m_testId;
    m_testId = 0;
    const std::int64_t startedMs = m_clock.localMilliseconds();
    std::int64_t testId = 0;
    std::int64_t studentId = 0;
    const bool begun = m_store.write([&](SqliteDatabase &db) {
        if (previous != 0) {
            SqliteStatement &close = db.cached(
                "UPDATE test SET ending = ?2, "
                "rights = (SELECT count(*) FROM answer WHERE test_id = ?1 AND correct = 1), "
                "wrongs = (SELECT count(*) FROM answer WHERE test_id = ?1 AND correct = 0), "
                "score = (SELECT coalesce(sum(2 * correct - 1), 0) FROM answer "
                "WHERE test_id = ?1) WHERE id = ?1 AND ending IS NULL");
            close.bindAll(previous, Interrupted);
            close.run();
        }
        const std::int64_t student = m_roster.ensureIdAt(db, start.student);
        const std::int64_t subject = m_subjects.ensureIdAt(db, start.subject);
        if (student == 0 || subject == 0)
            return;
        db.cached("INSERT INTO test (student_id, subject_id, level, started, seconds, practice) "
                  "VALUES (?, ?, ?, ?, ?, ?)")
            .bindAll(student, subject, start.level, startedMs / 1000, start.seconds, start.practice)
            .run();
        testId = db.lastInsertId();
        studentId = student;
    });
    if (!begun || testId == 0)
        return;
    m_testId = testId;
    m_studentId = studentId;
    m_store.holdCheckpoints(true);
    m_level = start.level;
    m_practice = start.practice;
    m_nextSeq = 0;
    m_startedSteady = m_questionSteady = m_clock.steadyMilliseconds();
}

void HistoryRecorder::questionShown()
{
    m_questionSteady = m_clock.steadyMilliseconds();
}

HistoryRecorder::Timing HistoryRecorder::takeTiming()
{
    const std::int64_t now = m_clock.steadyMilliseconds();
    Timing timing{std::max<std::int64_t>(now - m_startedSteady, 0),
                  std::max<std::int64_t>(now - m_questionSteady, 0)};
    m_questionSteady = now;
    return timing;
}

void HistoryRecorder::recordArithmetic(const ArithmeticAnswer &answer)
{
    if (!followStore())
        return;
    const Timing timing = takeTiming();
    if (answer.operation < 0 || answer.operation >= OperationCount || answer.blank < 0 ||
        answer.blank > 2)
        return;
    const int seq = m_nextSeq++;
    m_store.write([&](SqliteDatabase &db) {
        SqliteStatement &insert = db.cached(
            "INSERT INTO answer (test_id, seq, at_ms, took_ms, correct, operation, number1, "
            "number2, result, blank, typed) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        insert.bindAll(m_testId, seq, timing.at, timing.took, answer.correct, answer.operation,
                       answer.number1, answer.number2, answer.result, answer.blank, answer.typed);
        if (isPlainInteger(answer.typed))
            insert.bind(11, std::stoll(answer.typed));
        insert.run();
        const FactAnswer fact{
            answer.correct,
            static_cast<int>(std::min<std::int64_t>(timing.took, std::int64_t(1) << 30)), m_level,
            m_practice};
        addRecentFactAnswer(db, m_studentId, {answer.operation, answer.number1, answer.number2, {}},
                            fact);
    });
}

void HistoryRecorder::recordChoice(const ChoiceAnswer &answer)
{
    if (!followStore())
        return;
    const Timing timing = takeTiming();
    if (answer.right < 0 || answer.right > 3 || answer.chosen < 0 || answer.chosen > 3)
        return;
    const int seq = m_nextSeq++;
    m_store.write([&](SqliteDatabase &db) {
        const StoredChoice stored = storeChoiceQuestion(db, answer);
        db.cached("INSERT INTO answer (test_id, seq, at_ms, took_ms, correct, question_id, "
                  "shown, chosen) VALUES (?, ?, ?, ?, ?, ?, ?, ?)")
            .bindAll(m_testId, seq, timing.at, timing.took, answer.chosen == answer.right,
                     stored.questionId, stored.shown, answer.chosen)
            .run();
    });
}

void HistoryRecorder::endTest(const TestEnd &end)
{
    if (!followStore())
        return;
    const std::int64_t testId = m_testId;
    m_testId = 0;
    m_store.write([&](SqliteDatabase &db) {
        db.cached("UPDATE test SET ending = ?, score = ?, rights = ?, wrongs = ? WHERE id = ?")
            .bindAll(end.stopped ? 1 : 0, end.score, end.rights, end.wrongs, testId)
            .run();
    });
    m_store.holdCheckpoints(false);
}
