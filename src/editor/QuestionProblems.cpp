#include "QuestionProblems.h"

#include <algorithm>
#include <string_view>

namespace {

bool isBlank(std::string_view text, std::size_t at, std::size_t &length)
{
    const unsigned char c = static_cast<unsigned char>(text[at]);
    if (c == ' ' || (c >= '\t' && c <= '\r')) {
        length = 1;
        return true;
    }
    // A no-break space, which UTF-8 writes as C2 A0.
    if (c == 0xC2 && at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) == 0xA0) {
        length = 2;
        return true;
    }
    return false;
}

std::string_view trimmed(std::string_view text)
{
    std::size_t length = 0;
    while (!text.empty() && isBlank(text, 0, length))
        text.remove_prefix(length);
    // From the end, a blank is either one byte or the two of a no-break space.
    while (!text.empty()) {
        const std::size_t last = text.size() - 1;
        if (isBlank(text, last, length))
            text.remove_suffix(1);
        else if (last > 0 && isBlank(text, last - 1, length) && length == 2)
            text.remove_suffix(2);
        else
            break;
    }
    return text;
}

} // namespace

bool QuestionProblems::incomplete() const
{
    return emptyText ||
           std::any_of(emptyAnswers.begin(), emptyAnswers.end(), [](bool empty) { return empty; });
}

bool QuestionProblems::repeated() const
{
    return std::any_of(repeats.begin(), repeats.end(), [](int earlier) { return earlier >= 0; });
}

QuestionProblems findProblems(const Question &question, int subject)
{
    QuestionProblems problems;
    problems.emptyText = subject != SpellingSubject && trimmed(question.text).empty();
    const std::array<std::string_view, QuestionProblems::AnswerCount> answers = {
        trimmed(question.answer), trimmed(question.wrong1), trimmed(question.wrong2),
        trimmed(question.wrong3)};
    for (int i = 0; i < QuestionProblems::AnswerCount; ++i) {
        problems.emptyAnswers[i] = answers[i].empty();
        if (answers[i].empty())
            continue;
        for (int earlier = 0; earlier < i && problems.repeats[i] < 0; ++earlier)
            if (answers[earlier] == answers[i])
                problems.repeats[i] = earlier;
    }
    return problems;
}
