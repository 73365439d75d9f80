#include "core/PositionIds.h"

#include "core/NameMatching.h"
#include "core/Sqlite.h"

#include <utility>

PositionIds::PositionIds(std::string table) : m_table(std::move(table))
{
}

void PositionIds::match(SqliteDatabase &db, const std::vector<std::string> &names)
{
    std::vector<std::int64_t> ids;
    std::vector<KnownName> known;
    std::vector<bool> hadPosition;
    // Rows with a position first, in its order, so that repeated names pair in order.
    SqliteStatement rows = db.prepare("SELECT id, position, name FROM " + m_table +
                                      " ORDER BY position IS NULL, position, id");
    while (rows.step()) {
        ids.push_back(rows.integer(0));
        const int position = rows.isNull(1) ? -1 : static_cast<int>(rows.integer(1));
        known.push_back({std::string(rows.text(2)), position});
    }
    const std::vector<int> matches = matchNames(known, names);

    std::vector<bool> used(known.size(), false);
    m_entries.assign(names.size(), Entry{});
    for (std::size_t i = 0; i < names.size(); ++i) {
        Entry &entry = m_entries[i];
        entry.name = names[i];
        if (matches[i] >= 0) {
            const auto k = std::size_t(matches[i]);
            used[k] = true;
            entry.id = ids[k];
            entry.savedPosition = known[k].position;
            entry.savedName = known[k].name;
        }
    }
    for (std::size_t k = 0; k < known.size(); ++k) {
        if (!used[k] && known[k].position >= 0)
            detach(db, ids[k]);
    }
    save(db);
}

void PositionIds::save(SqliteDatabase &db)
{
    SqliteStatement update =
        db.prepare("UPDATE " + m_table + " SET position = ?, name = ? WHERE id = ?");
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        Entry &entry = m_entries[i];
        const int position = static_cast<int>(i);
        if (entry.id == 0) {
            entry.id = insert(db, position, entry.name);
        } else if (entry.savedPosition != position || entry.savedName != entry.name) {
            update.bindAll(position, entry.name, entry.id).run();
        }
        entry.savedPosition = position;
        entry.savedName = entry.name;
    }
}

void PositionIds::add(const std::string &name)
{
    Entry entry;
    entry.name = name;
    m_entries.push_back(entry);
}

void PositionIds::rename(int position, const std::string &name)
{
    if (position >= 0 && position < size())
        m_entries[std::size_t(position)].name = name;
}

std::int64_t PositionIds::remove(int position)
{
    if (position < 0 || position >= size())
        return 0;
    const std::int64_t id = m_entries[std::size_t(position)].id;
    m_entries.erase(m_entries.begin() + position);
    return id;
}

void PositionIds::detach(SqliteDatabase &db, std::int64_t id)
{
    SqliteStatement used =
        db.prepare("SELECT EXISTS (SELECT 1 FROM test WHERE " + m_table + "_id = ?)");
    used.bindAll(id);
    const bool hasHistory = used.step() && used.integer(0) != 0;
    used.reset();
    if (hasHistory)
        db.prepare("UPDATE " + m_table + " SET position = NULL WHERE id = ?").bindAll(id).run();
    else
        db.prepare("DELETE FROM " + m_table + " WHERE id = ?").bindAll(id).run();
}

std::vector<std::string> PositionIds::names() const
{
    std::vector<std::string> names;
    for (const Entry &entry : m_entries)
        names.push_back(entry.name);
    return names;
}

std::int64_t PositionIds::idAt(int position) const
{
    return position >= 0 && position < size() ? m_entries[std::size_t(position)].id : 0;
}

std::int64_t PositionIds::ensureIdAt(SqliteDatabase &db, int position)
{
    if (position < 0 || position >= size())
        return 0;
    Entry &entry = m_entries[std::size_t(position)];
    if (entry.id == 0) {
        // Written with its position now; the position of a roster not yet saved
        // is set again when it is.
        entry.id = insert(db, position, entry.name);
        entry.savedPosition = position;
        entry.savedName = entry.name;
    }
    return entry.id;
}

std::int64_t PositionIds::insert(SqliteDatabase &db, int position, const std::string &name)
{
    db.prepare("INSERT INTO " + m_table + " (position, name) VALUES (?, ?)")
        .bindAll(position, name)
        .run();
    return db.lastInsertId();
}
