// Recording a test as it is taken. Each answer is committed as it is given, so a
// program killed mid-test loses at most the answer being typed; a test left
// running that way is closed as interrupted when the history is next opened.
#pragma once

#include "core/HistoryTypes.h"

#include <cstdint>

class HistoryClock;
class HistoryRoster;
class HistoryStore;
class HistorySubjects;

class HistoryRecorder {
public:
    HistoryRecorder(HistoryStore &store, HistoryRoster &roster, HistorySubjects &subjects,
                    HistoryClock &clock);

    // A test or practice round starts now. One still being recorded is closed
    // as interrupted first.
    void beginTest(const TestStart &start);
    // A question's time counts from the previous answer, or from the start; a
    // round that shows something between questions calls this when the next one
    // appears.
    void questionShown();
    void recordArithmetic(const ArithmeticAnswer &answer);
    void recordChoice(const ChoiceAnswer &answer);
    void endTest(const TestEnd &end);

    bool isRecording() const { return m_testId != 0; }

private:
    // Milliseconds since the start and since the question appeared, and the
    // next question's start moved to now.
    struct Timing {
        std::int64_t at = 0;
        std::int64_t took = 0;
    };
    Timing takeTiming();
    bool followStore();

    HistoryStore &m_store;
    HistoryRoster &m_roster;
    HistorySubjects &m_subjects;
    HistoryClock &m_clock;
    std::uint64_t m_generation = 0;
    std::int64_t m_testId = 0;
    std::int64_t m_studentId = 0;
    int m_level = 0;
    bool m_practice = false;
    int m_nextSeq = 0;
    std::int64_t m_startedSteady = 0;
    std::int64_t m_questionSteady = 0;
};
