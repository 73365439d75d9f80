#include "core/HistorySubjects.h"

#include "core/HistoryStore.h"
#include "core/Sqlite.h"
#include "core/TestBank.h"

HistorySubjects::HistorySubjects(HistoryStore &store)
    : m_store(store), m_generation(store.generation())
{
}

void HistorySubjects::followStore()
{
    if (m_generation == m_store.generation())
        return;
    m_generation = m_store.generation();
    const std::vector<std::string> names = m_ids.names();
    m_store.write([&](SqliteDatabase &db) { m_ids.match(db, names); });
}

void HistorySubjects::matchSubjects(const std::vector<std::string> &names)
{
    m_generation = m_store.generation();
    m_store.write([&](SqliteDatabase &db) { m_ids.match(db, names); });
}

void HistorySubjects::subjectAdded(const std::string &name)
{
    followStore();
    m_ids.add(name);
    m_store.write([&](SqliteDatabase &db) { m_ids.save(db); });
}

void HistorySubjects::subjectRenamed(int position, const std::string &name)
{
    followStore();
    m_ids.rename(position, name);
    m_store.write([&](SqliteDatabase &db) { m_ids.save(db); });
}

void HistorySubjects::subjectDeleted(int position)
{
    followStore();
    const std::int64_t id = m_ids.remove(position);
    m_store.write([&](SqliteDatabase &db) {
        if (id != 0)
            m_ids.detach(db, id);
        m_ids.save(db);
    });
}

void HistorySubjects::subjectsReverted()
{
    followStore();
    std::vector<std::int64_t> removed;
    while (m_ids.size() > FirstAddedSubject)
        removed.push_back(m_ids.remove(m_ids.size() - 1));
    m_store.write([&](SqliteDatabase &db) {
        for (const std::int64_t id : removed) {
            if (id != 0)
                m_ids.detach(db, id);
        }
        m_ids.save(db);
    });
}

std::int64_t HistorySubjects::idAt(int position)
{
    followStore();
    return m_ids.idAt(position);
}

std::int64_t HistorySubjects::ensureIdAt(SqliteDatabase &db, int position)
{
    return m_ids.ensureIdAt(db, position);
}
