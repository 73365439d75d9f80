#include "fluency/ClassOverview.h"

#include "core/HistoryQueries.h"
#include "core/TestBank.h"
#include "fluency/Mastery.h"

std::vector<OverviewRow> makeClassOverview(HistoryQueries &queries,
                                           const std::vector<std::string> &names,
                                           const std::vector<std::string> &subjectNames)
{
    std::vector<OverviewRow> rows;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const int student = static_cast<int>(i);
        const std::vector<SubjectScores> subjects = queries.recentScores(student);
        if (subjects.empty()) {
            OverviewRow row;
            row.student = student;
            row.name = names[i];
            rows.push_back(row);
            continue;
        }
        std::optional<int> notYet;
        for (const SubjectScores &scores : subjects) {
            OverviewRow row;
            row.student = student;
            row.name = names[i];
            row.subject = scores.subject;
            if (scores.subject >= 0 && std::size_t(scores.subject) < subjectNames.size())
                row.subjectName = subjectNames[std::size_t(scores.subject)];
            row.trend = trendOf(scores.scores);
            row.lastTest = scores.lastTest;
            if (scores.subject == ArithmeticSubject) {
                if (!notYet) {
                    int count = 0;
                    for (const ArithmeticFact &fact : queries.facts(student))
                        count += masteryOf(fact) == Mastery::NotYet ? 1 : 0;
                    notYet = count;
                }
                row.factsNotYet = notYet;
            }
            rows.push_back(row);
        }
    }
    return rows;
}
