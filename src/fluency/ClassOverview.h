// Who needs help: for each student and each subject the student has taken tests
// in, how the scores are going, how many facts are not known yet, and when the
// last test was. Read from the history for the whole roster.
#pragma once

#include "core/LocalTime.h"
#include "fluency/Trend.h"

#include <optional>
#include <string>
#include <vector>

class HistoryQueries;

struct OverviewRow {
    int student = 0; // roster position
    std::string name;
    std::optional<int> subject; // none for a student with no tests yet
    std::string subjectName;
    Trend trend;
    // Arithmetic only: the facts answered that are not yet known.
    std::optional<int> factsNotYet;
    LocalSeconds lastTest = 0;
};

// names are the roster's, subjectNames the bank's, both by position.
std::vector<OverviewRow> makeClassOverview(HistoryQueries &queries,
                                           const std::vector<std::string> &names,
                                           const std::vector<std::string> &subjectNames);
