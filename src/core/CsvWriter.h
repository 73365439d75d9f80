// Writing CSV as RFC 4180 has it, for the exports a spreadsheet opens: fields
// separated by commas, rows ended by CR LF, and a field that holds a comma, a
// quote or a line break quoted, its quotes doubled.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

class CsvWriter {
public:
    // Rows are gathered and handed to out in large pieces.
    explicit CsvWriter(std::ostream &out);
    ~CsvWriter();
    CsvWriter(const CsvWriter &) = delete;
    CsvWriter &operator=(const CsvWriter &) = delete;

    // The UTF-8 byte-order mark, by which spreadsheets know the encoding.
    void writeByteOrderMark();
    CsvWriter &field(std::string_view text);
    void endRow();
    // Hands what is gathered to the stream; false when the stream failed.
    bool flush();

private:
    std::ostream &m_out;
    std::string m_buffer;
    bool m_rowStarted = false;
};
