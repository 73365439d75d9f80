#include "Judge.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

// Blanks are skipped wherever they occur in a number, so "1 2" reads as 12.
bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Reads the leading number of a text. The number is rebuilt as sign, digits and
// a decimal exponent, so the copy handed to strtod never holds a decimal point,
// whose character would depend on the C locale (a Qt program sets it from the
// user's environment).
class NumberScanner {
public:
    explicit NumberScanner(std::string_view text) : m_text(text) {}

    double value()
    {
        std::string digits;
        if (peek() == '+' || peek() == '-') {
            digits += take();
        }
        long long exponent = 0;
        bool anyDigit = false;
        bool seenPoint = false;
        for (;;) {
            const char c = peek();
            if (isDigit(c)) {
                digits += take();
                anyDigit = true;
                if (seenPoint) {
                    --exponent;
                }
            } else if (c == '.' && !seenPoint) {
                take();
                seenPoint = true;
            } else {
                break;
            }
        }
        if (!anyDigit) {
            return 0.0;
        }
        exponent += exponentPart();
        digits += 'e' + std::to_string(exponent);
        return std::strtod(digits.c_str(), nullptr);
    }

private:
    char peek()
    {
        while (m_pos < m_text.size() && isBlank(m_text[m_pos])) {
            ++m_pos;
        }
        return m_pos < m_text.size() ? m_text[m_pos] : '\0';
    }

    char take() { return m_text[m_pos++]; }

    // "E" or "D" (either case), an optional sign and digits; 0 when no digit follows.
    long long exponentPart()
    {
        const char marker = peek();
        if (marker != 'E' && marker != 'e' && marker != 'D' && marker != 'd') {
            return 0;
        }
        take();
        bool negative = false;
        if (peek() == '+' || peek() == '-') {
            negative = take() == '-';
        }
        // Capped far beyond any double's range, so a long run of digits cannot overflow
        // while strtod still sees an exponent that gives infinity or zero.
        constexpr long long cap = 1'000'000;
        long long value = 0;
        while (isDigit(peek())) {
            value = std::min(value * 10 + (take() - '0'), cap);
        }
        return negative ? -value : value;
    }

    std::string_view m_text;
    std::size_t m_pos = 0;
};

} // namespace

double leadingNumber(std::string_view text)
{
    return NumberScanner(text).value();
}

bool isRightArithmetic(std::string_view number1, char symbol, std::string_view number2,
                       std::string_view answer)
{
    const double left = leadingNumber(number1);
    const double right = leadingNumber(number2);
    double result = 0.0;
    switch (symbol) {
    case '+':
        result = left + right;
        break;
    case '-':
        result = left - right;
        break;
    case 'x':
        result = left * right;
        break;
    case '/':
        // There is no result to compare, and the test must go on: judged wrong.
        if (right == 0.0) {
            return false;
        }
        result = left / right;
        break;
    default:
        return false;
    }
    return result == leadingNumber(answer);
}
