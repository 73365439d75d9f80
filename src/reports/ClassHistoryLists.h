// The class report's pages from the answer history: who needs help (each
// student's trend, facts not yet known and last test in each subject) and, for
// each multiple-choice subject and level, the questions the class misses most.
#pragma once

#include "core/HistoryTypes.h"
#include "core/LocalTime.h"
#include "fluency/ClassOverview.h"
#include "reports/ClassReport.h"

#include <functional>
#include <string>
#include <vector>

class HistoryQueries;

using DateWriter = std::function<std::string(LocalSeconds)>;

// The questions listed per subject and level.
constexpr int MissedQuestionsListed = 10;

// The overview rows as the "Who needs help" list prints them: falling scores
// first, then the most facts not yet known, then the longest since a test.
ReportList needsHelpList(std::vector<OverviewRow> rows, const DateWriter &writeDate);

// A list of the questions missed most under the heading, a row for each:
// question, right answer, times missed, times asked. A question shown only as
// its four choices (a spelling) reads "(the choices only)".
ReportList missedQuestionsList(std::string heading, const std::vector<MissedQuestion> &missed);

// Adds both kinds of page to the report.
void addHistoryLists(ClassReport &report, HistoryQueries &queries, const TestBank &bank,
                     const std::vector<std::string> &names, const DateWriter &writeDate);
