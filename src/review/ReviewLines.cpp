#include "ReviewLines.h"

#include "core/TestBank.h"

#include <array>

namespace {

// The minus sign is drawn as the main screen draws it: a true minus, as wide
// as the plus (U+2212, in UTF-8).
std::string shownOperation(char symbol)
{
    return symbol == '-' ? std::string("\xE2\x88\x92") : std::string(1, symbol);
}

std::string equation(const std::string &number1, char symbol, const std::string &number2,
                     const std::string &result)
{
    return number1 + " " + shownOperation(symbol) + " " + number2 + " = " + result;
}

// The typed text without the blanks around it, as the child sees it in the box.
std::string trimmed(const std::string &text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The problem with the child's entry in the blank's place.
std::string childsEquation(const ArithmeticProblem &problem, const std::string &typed)
{
    std::array<std::string, 3> numbers = {std::to_string(problem.number1),
                                          std::to_string(problem.number2),
                                          std::to_string(problem.answer)};
    numbers[static_cast<std::size_t>(problem.blank)] = trimmed(typed);
    return equation(numbers[0], problem.symbol, numbers[1], numbers[2]);
}

std::string arithmeticLine(const ArithmeticProblem &problem,
                           const std::optional<GivenAnswer> &answer)
{
    if (!answer)
        return problemText(problem) + ", not answered";
    // A right entry may differ from the generated number (any number times
    // nought): the child's own equation is the one that was right.
    if (answer->right)
        return childsEquation(problem, answer->typed);
    // Where the answer was asked, the number alone says what was written; where
    // a number was, the child's equation beside the right one shows which.
    const std::string wrote = problem.blank == MathBox::Answer
                                  ? trimmed(answer->typed)
                                  : childsEquation(problem, answer->typed);
    return problemText(problem) + ", you wrote " + wrote;
}

bool endsInPunctuation(const std::string &text)
{
    const std::string marks = "?:.!";
    return !text.empty() && marks.find(text.back()) != std::string::npos;
}

std::string choiceLine(const MultipleChoiceProblem &problem,
                       const std::optional<GivenAnswer> &answer, int subject)
{
    // "Capital of France: Paris". A Spelling level without clues asks for the
    // word alone, and so does any question whose text was left empty.
    std::string line;
    if (!problem.text.empty())
        line = problem.text + (endsInPunctuation(problem.text) ? " " : ": ") + problem.rightAnswer;
    else if (subject == SpellingSubject)
        line = "The correct spelling is " + problem.rightAnswer;
    else
        line = "The correct answer is " + problem.rightAnswer;
    if (!answer)
        return line + ", not answered";
    if (answer->right)
        return line;
    const auto chosen = static_cast<std::size_t>(answer->chosen);
    const std::string given = chosen < problem.choices.size() ? problem.choices[chosen] : "";
    return line + ", you chose " + given;
}

std::string markWords(ReviewMark mark)
{
    switch (mark) {
    case ReviewMark::Missed:
        return "Missed";
    case ReviewMark::Right:
        return "Right";
    case ReviewMark::NotAnswered:
        break;
    }
    return "Not answered";
}

ReviewMark markOf(const RecordedQuestion &question)
{
    if (!question.answer)
        return ReviewMark::NotAnswered;
    return question.answer->right ? ReviewMark::Right : ReviewMark::Missed;
}

} // namespace

std::string problemText(const ArithmeticProblem &problem)
{
    return equation(std::to_string(problem.number1), problem.symbol,
                    std::to_string(problem.number2), std::to_string(problem.answer));
}

std::vector<ReviewLine> reviewLines(const TestRecord &record)
{
    std::vector<ReviewLine> lines;
    for (const ReviewMark group : {ReviewMark::Missed, ReviewMark::Right, ReviewMark::NotAnswered})
        for (const RecordedQuestion &question : record.questions()) {
            if (markOf(question) != group)
                continue;
            ReviewLine line;
            line.mark = group;
            if (const auto *problem = std::get_if<ArithmeticProblem>(&question.asked))
                line.text = arithmeticLine(*problem, question.answer);
            else
                line.text = choiceLine(std::get<MultipleChoiceProblem>(question.asked),
                                       question.answer, record.subject());
            line.spoken = markWords(group) + ": " + line.text;
            lines.push_back(std::move(line));
        }
    return lines;
}

std::string reviewCaption(const TestRecord &record)
{
    const int missed = record.missedCount();
    return missed == 0 ? "Review" : "Review (" + std::to_string(missed) + " missed)";
}

std::string reviewHeading(const TestRecord &record)
{
    const int answered = record.answeredCount();
    const int missed = record.missedCount();
    if (missed == 0)
        return answered == 1 ? "Your answer was right."
                             : "All " + std::to_string(answered) + " answers were right.";
    return "You missed " + std::to_string(missed) + " of " + std::to_string(answered) +
           ". They come first.";
}
