// Judging answers: an Arithmetic answer is right when the equation on the
// screen holds, whatever numbers were generated.
#pragma once

#include <string_view>

// The value of the leading number of a text (blanks skipped, a sign, digits, a
// decimal point and an exponent allowed); 0 when the text starts with no number.
double leadingNumber(std::string_view text);

// Whether number1 <symbol> number2 equals answer exactly. A division by zero is wrong.
bool isRightArithmetic(std::string_view number1, char symbol, std::string_view number2,
                       std::string_view answer);
