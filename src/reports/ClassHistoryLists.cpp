#include "reports/ClassHistoryLists.h"

#include "core/HistoryQueries.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

int helpRank(TrendDirection direction)
{
    switch (direction) {
    case TrendDirection::Down:
        return 0;
    case TrendDirection::TooFewTests:
        return 1;
    case TrendDirection::Level:
        return 2;
    case TrendDirection::Up:
        break;
    }
    return 3;
}

std::string meanText(const Trend &trend, double value)
{
    if (trend.direction == TrendDirection::TooFewTests)
        return {};
    const long long tenths = std::llround(value * 10);
    return (tenths < 0 ? "-" : "") + std::to_string(std::llabs(tenths) / 10) + "." +
           std::to_string(std::llabs(tenths) % 10);
}

} // namespace

ReportList needsHelpList(std::vector<OverviewRow> rows, const DateWriter &writeDate)
{
    std::stable_sort(rows.begin(), rows.end(), [](const OverviewRow &a, const OverviewRow &b) {
        // A student never tested comes with the falling ones: nobody knows how they do.
        const int rankA = a.subject ? helpRank(a.trend.direction) : 0;
        const int rankB = b.subject ? helpRank(b.trend.direction) : 0;
        return std::make_tuple(rankA, -a.factsNotYet.value_or(0), a.lastTest) <
               std::make_tuple(rankB, -b.factsNotYet.value_or(0), b.lastTest);
    });
    ReportList list;
    list.heading = "Who needs help";
    list.captions = {"Student",       "Subject",      "Scores",
                     "Earlier tests", "Latest tests", "Facts not yet known",
                     "Last test"};
    list.widths = {0.22, 0.16, 0.12, 0.11, 0.11, 0.14, 0.14};
    list.emptyText = "No students.";
    for (const OverviewRow &row : rows) {
        if (!row.subject) {
            list.rows.push_back({row.name, "", "no tests yet", "", "", "", ""});
            continue;
        }
        list.rows.push_back(
            {row.name, row.subjectName, trendName(row.trend.direction),
             meanText(row.trend, row.trend.earlier), meanText(row.trend, row.trend.recent),
             row.factsNotYet ? std::to_string(*row.factsNotYet) : "", writeDate(row.lastTest)});
    }
    return list;
}

ReportList missedQuestionsList(std::string heading, const std::vector<MissedQuestion> &missed)
{
    ReportList list;
    list.heading = std::move(heading);
    list.captions = {"Question", "Right answer", "Missed", "Asked"};
    list.widths = {0.56, 0.24, 0.1, 0.1};
    for (const MissedQuestion &question : missed) {
        list.rows.push_back({question.question.empty() ? "(the choices only)" : question.question,
                             question.rightAnswer, std::to_string(question.missed),
                             std::to_string(question.asked)});
    }
    return list;
}

void addHistoryLists(ClassReport &report, HistoryQueries &queries, const TestBank &bank,
                     const std::vector<std::string> &names, const DateWriter &writeDate)
{
    std::vector<std::string> subjectNames;
    for (const Subject &subject : bank.subjects)
        subjectNames.push_back(subject.name);
    report.lists.push_back(
        needsHelpList(makeClassOverview(queries, names, subjectNames), writeDate));

    for (std::size_t subject = 0; subject < bank.subjects.size(); ++subject) {
        if (int(subject) == ArithmeticSubject)
            continue;
        for (int level = 0; level < LevelCount; ++level) {
            const std::vector<MissedQuestion> missed =
                queries.classMissedQuestions(int(subject), level, MissedQuestionsListed);
            if (missed.empty())
                continue;
            report.lists.push_back(
                missedQuestionsList(subjectNames[subject] + ", level " +
                                        (level == 0 ? std::string("K") : std::to_string(level)) +
                                        ": the questions missed most",
                                    missed));
        }
    }
}
