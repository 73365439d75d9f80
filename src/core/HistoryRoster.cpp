#include "core/HistoryRoster.h"

#include "core/HistoryStore.h"
#include "core/RecentFacts.h"
#include "core/Sqlite.h"

namespace {

void eraseStudentHistory(SqliteDatabase &db, std::int64_t studentId)
{
    db.cached("DELETE FROM answer WHERE test_id IN (SELECT id FROM test WHERE student_id = ?)")
        .bindAll(studentId)
        .run();
    db.cached("DELETE FROM test WHERE student_id = ?").bindAll(studentId).run();
    db.cached("DELETE FROM fact_recent WHERE student_id = ?").bindAll(studentId).run();
    db.cached("DELETE FROM student WHERE id = ?").bindAll(studentId).run();
}

bool isUnmatched(SqliteDatabase &db, std::int64_t key)
{
    SqliteStatement &row = db.cached("SELECT position IS NULL FROM student WHERE id = ?");
    row.bindAll(key);
    const bool unmatched = row.step() && row.integer(0) != 0;
    row.reset();
    return unmatched;
}

} // namespace

HistoryRoster::HistoryRoster(HistoryStore &store) : m_store(store), m_generation(store.generation())
{
}

void HistoryRoster::followStore()
{
    if (m_generation == m_store.generation())
        return;
    m_generation = m_store.generation();
    m_deleted.clear();
    const std::vector<std::string> names = m_ids.names();
    m_store.write([&](SqliteDatabase &db) { m_ids.match(db, names); });
}

void HistoryRoster::matchRoster(const std::vector<std::string> &names)
{
    m_generation = m_store.generation();
    // Deletes not yet saved belonged to the roster being replaced; their history
    // stays, matched by name or listed as not matched.
    m_deleted.clear();
    m_store.write([&](SqliteDatabase &db) { m_ids.match(db, names); });
}

void HistoryRoster::studentAdded(const std::string &name)
{
    followStore();
    m_ids.add(name);
}

void HistoryRoster::studentRenamed(int position, const std::string &name)
{
    followStore();
    m_ids.rename(position, name);
}

void HistoryRoster::studentDeleted(int position)
{
    followStore();
    if (const std::int64_t id = m_ids.remove(position))
        m_deleted.push_back(id);
}

void HistoryRoster::rosterSaved(const std::vector<std::string> &names)
{
    followStore();
    const bool erased = !m_deleted.empty();
    const bool saved = m_store.write([&](SqliteDatabase &db) {
        for (const std::int64_t id : m_deleted)
            eraseStudentHistory(db, id);
        if (static_cast<int>(names.size()) != m_ids.size()) {
            // A change the screens did not report; the names decide.
            m_ids.match(db, names);
            return;
        }
        for (std::size_t i = 0; i < names.size(); ++i)
            m_ids.rename(static_cast<int>(i), names[i]);
        m_ids.save(db);
    });
    if (saved)
        m_deleted.clear();
    if (saved && erased)
        m_store.checkpoint();
}

std::vector<UnmatchedStudent> HistoryRoster::unmatchedStudents()
{
    followStore();
    std::vector<UnmatchedStudent> unmatched;
    m_store.read([&](SqliteDatabase &db) {
        SqliteStatement rows =
            db.prepare("SELECT s.id, s.name, count(t.id), min(t.started), max(t.started) "
                       "FROM student s LEFT JOIN test t ON t.student_id = s.id "
                       "WHERE s.position IS NULL GROUP BY s.id ORDER BY s.name, s.id");
        while (rows.step()) {
            unmatched.push_back({rows.integer(0), std::string(rows.text(1)),
                                 static_cast<int>(rows.integer(2)), rows.integer(3),
                                 rows.integer(4)});
        }
    });
    return unmatched;
}

void HistoryRoster::giveUnmatched(std::int64_t key, int position)
{
    followStore();
    m_store.write([&](SqliteDatabase &db) {
        if (!isUnmatched(db, key))
            return;
        const std::int64_t student = m_ids.ensureIdAt(db, position);
        if (student == 0)
            return;
        db.prepare("UPDATE test SET student_id = ? WHERE student_id = ?")
            .bindAll(student, key)
            .run();
        db.prepare("DELETE FROM fact_recent WHERE student_id = ?").bindAll(key).run();
        db.prepare("DELETE FROM student WHERE id = ?").bindAll(key).run();
        rebuildRecentFacts(db, student);
    });
}

void HistoryRoster::deleteUnmatched(std::int64_t key)
{
    followStore();
    const bool erased = m_store.write([&](SqliteDatabase &db) {
        if (isUnmatched(db, key))
            eraseStudentHistory(db, key);
    });
    if (erased)
        m_store.checkpoint();
}

std::int64_t HistoryRoster::idAt(int position)
{
    followStore();
    return m_ids.idAt(position);
}

std::int64_t HistoryRoster::ensureIdAt(SqliteDatabase &db, int position)
{
    return m_ids.ensureIdAt(db, position);
}
