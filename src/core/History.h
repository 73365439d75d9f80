// The history of every answer, kept in Tavrino_History.db in the data folder:
// what each test recorded, whose it is, and what the screens read from it. The
// session owns one History; the screens use its parts and never see SQL.
//
// Nothing here throws into a test. When the file cannot be written the history
// turns itself off and every call does nothing; when it is damaged it is moved
// aside and a new one started. Either is told once through takeMessage().
#pragma once

#include "core/HistoryQueries.h"
#include "core/HistoryRecorder.h"
#include "core/HistoryRoster.h"
#include "core/HistorySubjects.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

class HistoryClock;
class HistoryStore;

class History {
public:
    // Opens (or creates, or upgrades) the history in dataDir. Then call
    // roster().matchRoster() and subjects().matchSubjects() with the names loaded
    // from the two data files, before recording or reading.
    History(const std::filesystem::path &dataDir, HistoryClock &clock);
    ~History();
    History(const History &) = delete;
    History &operator=(const History &) = delete;

    bool isOn() const;
    // The next message for the teacher, if any; each is given once.
    std::optional<std::string> takeMessage();

    HistoryRoster &roster() { return m_roster; }
    HistorySubjects &subjects() { return m_subjects; }
    HistoryRecorder &recorder() { return m_recorder; }
    HistoryQueries &queries() { return m_queries; }

    // Every recorded answer as CSV (HistoryCsv.h); false when the history is off
    // or the stream failed.
    bool exportCsv(std::ostream &out);

    // A copy of the whole history made while it is open; it is written beside
    // file and renamed over it when complete. Gives a message on failure.
    std::optional<std::string> backUpTo(const std::filesystem::path &file);
    // Replaces the history, and only the history, with such a copy. The roster and
    // subjects in memory are matched to it again.
    std::optional<std::string> restoreFrom(const std::filesystem::path &file);

    // Holds back the commits of everything recorded while it lives and makes them
    // as one at its end: for writing many tests at once, never for a test being
    // taken.
    class Batch {
    public:
        explicit Batch(History &history);
        ~Batch();
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;

    private:
        HistoryStore &m_store;
    };

private:
    std::unique_ptr<HistoryStore> m_store;
    HistoryRoster m_roster;
    HistorySubjects m_subjects;
    HistoryRecorder m_recorder;
    HistoryQueries m_queries;
};
