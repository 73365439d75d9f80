// Records of delimited text, such as a spreadsheet saved as CSV: fields split
// by a delimiter, records by line breaks, quoting as RFC 4180 describes it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The delimiter of the first record: comma, semicolon (spreadsheets in
// countries with a decimal comma) or tab, whichever it holds most of outside
// quotes; comma when it holds none.
char guessDelimiter(std::string_view text);

// Reads record after record. Forgiving where files stray from the standard: a
// quote inside an unquoted field is kept, text after a closing quote joins the
// field, blanks before an opening quote are skipped, and a quoted field left
// open runs to the end of the text.
class DelimitedReader {
public:
    DelimitedReader(std::string_view text, char delimiter);

    // The next record's fields; false when the text has no more. A line break
    // at the very end of the text does not start another record.
    bool next(std::vector<std::string> &fields);

private:
    // Reads one field from m_pos into field and stops at what follows it.
    void readField(std::string &field);

    std::string_view m_text;
    std::size_t m_pos = 0;
    char m_delimiter;
};
