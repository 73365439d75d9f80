#include "SpokenQuestion.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <string_view>
#include <vector>

namespace {

constexpr std::array<std::string_view, 20> Ones = {
    "zero",     "one",     "two",     "three",     "four",     "five",    "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",  "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
constexpr std::array<std::string_view, 10> Tens = {"",      "",      "twenty",  "thirty", "forty",
                                                   "fifty", "sixty", "seventy", "eighty", "ninety"};
// Largest first; each is a thousand times the next.
constexpr std::array<std::string_view, 6> Scales = {"quintillion", "quadrillion", "trillion",
                                                    "billion",     "million",     "thousand"};

// 1..999 in words.
std::string belowThousand(unsigned number)
{
    std::string words;
    if (number >= 100) {
        words = std::string(Ones[number / 100]) + " hundred";
        number %= 100;
        if (number == 0)
            return words;
        words += ' ';
    }
    if (number < 20)
        return words + std::string(Ones[number]);
    words += Tens[number / 10];
    if (number % 10 != 0)
        words += "-" + std::string(Ones[number % 10]);
    return words;
}

std::string trimmed(const std::string &text)
{
    const auto isSpace = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isSpace(text[begin]))
        ++begin;
    while (end > begin && isSpace(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

// The text as a sentence of its own, so that the voice stops after it: a full
// stop is added unless it ends in one already, and a closing colon or comma
// (a clue that runs into its answer) becomes one. Empty stays empty.
std::string sentence(const std::string &text)
{
    std::string said = trimmed(text);
    if (said.empty())
        return said;
    switch (said.back()) {
    case '.':
    case '?':
    case '!':
        return said;
    case ':':
    case ',':
    case ';':
        said.back() = '.';
        return said;
    default:
        return said + '.';
    }
}

std::string joined(const std::vector<std::string> &parts)
{
    std::string all;
    for (const std::string &part : parts) {
        if (part.empty())
            continue;
        if (!all.empty())
            all += ' ';
        all += part;
    }
    return all;
}

} // namespace

std::string numberInWords(std::int64_t number)
{
    if (number == 0)
        return std::string(Ones[0]);
    // The size in unsigned arithmetic, where the lowest int64 has one too.
    std::uint64_t size =
        number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
    std::vector<std::string> parts;
    if (number < 0)
        parts.emplace_back("negative");
    std::uint64_t scale = 1'000'000'000'000'000'000ULL;
    for (const std::string_view name : Scales) {
        if (size >= scale) {
            parts.push_back(belowThousand(static_cast<unsigned>(size / scale)) + " " +
                            std::string(name));
            size %= scale;
        }
        scale /= 1000;
    }
    if (size != 0)
        parts.push_back(belowThousand(static_cast<unsigned>(size)));
    return joined(parts);
}

std::string operationInWords(char symbol)
{
    switch (symbol) {
    case '-':
        return "minus";
    case 'x':
        return "times";
    case '/':
        return "divided by";
    default:
        return "plus";
    }
}

std::string spokenArithmetic(const ArithmeticProblem &problem)
{
    const auto said = [&problem](MathBox box, std::int32_t number) {
        return box == problem.blank ? std::string("what") : numberInWords(number);
    };
    std::string words = said(MathBox::Number1, problem.number1) + " " +
                        operationInWords(problem.symbol) + " " +
                        said(MathBox::Number2, problem.number2) + " equals " +
                        said(MathBox::Answer, problem.answer) + "?";
    words.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(words.front())));
    return words;
}

std::string spokenSpelling(const MultipleChoiceProblem &problem)
{
    // The label is the clue with a colon after it, or empty.
    std::string clue = trimmed(problem.label);
    if (!clue.empty() && clue.back() == ':')
        clue.pop_back();
    const std::string word = trimmed(problem.rightAnswer);
    return joined({sentence(clue), word.empty() ? word : "Spell: " + sentence(word)});
}

std::string spokenChoices(const MultipleChoiceProblem &problem)
{
    // A question without text is shown as its mark alone, which says nothing.
    const std::string question = trimmed(problem.label) == "?" ? "" : sentence(problem.label);
    std::vector<std::string> answers;
    for (const std::string &choice : problem.choices)
        if (!trimmed(choice).empty())
            answers.push_back(sentence(choice));
    if (answers.size() > 1)
        answers.back() = "Or " + answers.back();
    answers.insert(answers.begin(), question);
    return joined(answers);
}
