// Whose history is whose. The Students file has no ids and its names may repeat
// and change, so the history keeps the roster as last saved and follows each
// student through the calls the Students screen makes; a roster that changed
// outside the program is matched by name, then by position (NameMatching.h).
#pragma once

#include "core/HistoryTypes.h"
#include "core/PositionIds.h"

#include <cstdint>
#include <string>
#include <vector>

class HistoryStore;

class HistoryRoster {
public:
    explicit HistoryRoster(HistoryStore &store);

    // At start-up, and whenever the Students file was replaced (a restored backup,
    // a file from another computer): the names in roster order. History that
    // matches no name is kept and listed by unmatchedStudents().
    void matchRoster(const std::vector<std::string> &names);

    // As the Students screen changes the roster in memory:
    void studentAdded(const std::string &name = {}); // at the end
    void studentRenamed(int position, const std::string &name);
    // The student's history is erased when the roster is next saved.
    void studentDeleted(int position);
    // After every successful write of the Students file, with the names written:
    // erases the history of the students deleted since and keeps the roster.
    void rosterSaved(const std::vector<std::string> &names);

    std::vector<UnmatchedStudent> unmatchedStudents();
    // Gives the unmatched history to the student at position, added to the
    // student's own; or erases it.
    void giveUnmatched(std::int64_t key, int position);
    void deleteUnmatched(std::int64_t key);

    // For the other parts of the history. After the database was replaced (set
    // aside or restored), the rows are found again from the names in memory.
    void followStore();
    // The student's row, 0 when none yet.
    std::int64_t idAt(int position);
    // The same, written now when missing (a student added since the roster was
    // saved); 0 when out of range. Inside a write, after followStore().
    std::int64_t ensureIdAt(SqliteDatabase &db, int position);

private:
    HistoryStore &m_store;
    PositionIds m_ids{"student"};
    std::vector<std::int64_t> m_deleted;
    std::uint64_t m_generation;
};
