// Which history belongs to which subject of the bank. The history follows a
// subject through renames and through others being added or deleted; a deleted
// subject's history is kept under its last name.
#pragma once

#include "core/PositionIds.h"

#include <cstdint>
#include <string>
#include <vector>

class HistoryStore;
class SqliteDatabase;

class HistorySubjects {
public:
    explicit HistorySubjects(HistoryStore &store);

    // At start-up and whenever the Tests file was replaced: the subjects' names in
    // bank order, matched as the roster's are.
    void matchSubjects(const std::vector<std::string> &names);

    // As the Tests screen changes the bank; each is written at once.
    void subjectAdded(const std::string &name); // at the end
    void subjectRenamed(int position, const std::string &name);
    void subjectDeleted(int position);
    // Revert ALL to Default: the subjects added by the user are deleted.
    void subjectsReverted();

    // For the other parts of the history, as HistoryRoster's.
    void followStore();
    std::int64_t idAt(int position);
    std::int64_t ensureIdAt(SqliteDatabase &db, int position);

private:
    HistoryStore &m_store;
    PositionIds m_ids{"subject"};
    std::uint64_t m_generation;
};
