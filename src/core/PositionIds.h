// Which row of the history's student (or subject) table stands at each position
// of the roster (or bank), and the rows' names and positions kept as last saved.
// Shared by the roster and the subjects of the history.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class SqliteDatabase;

class PositionIds {
public:
    // table is "student" or "subject"; the test table's column naming it is table + "_id".
    explicit PositionIds(std::string table);

    // Pairs names with the rows (NameMatching.h): matched rows take their new
    // position and name, names left over get new rows, rows left over are detached.
    void match(SqliteDatabase &db, const std::vector<std::string> &names);
    // Writes every position and name that changed, and adds rows for new entries.
    void save(SqliteDatabase &db);

    void add(const std::string &name);
    void rename(int position, const std::string &name);
    // Takes the entry out and gives its id (0 when it had no row yet).
    std::int64_t remove(int position);
    // Detached rows keep their history without a position; a row without
    // history is deleted instead.
    void detach(SqliteDatabase &db, std::int64_t id);

    int size() const { return static_cast<int>(m_entries.size()); }
    std::vector<std::string> names() const;
    // 0 when the position is out of range or its row is not yet written.
    std::int64_t idAt(int position) const;
    // The row at the position, added now when it was not yet written; 0 when out of range.
    std::int64_t ensureIdAt(SqliteDatabase &db, int position);

private:
    struct Entry {
        std::int64_t id = 0;
        std::string name;
        int savedPosition = -1;
        std::string savedName;
    };

    std::int64_t insert(SqliteDatabase &db, int position, const std::string &name);

    std::string m_table;
    std::vector<Entry> m_entries;
};
