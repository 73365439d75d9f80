#include "core/CsvWriter.h"

namespace {

constexpr std::size_t FlushBytes = 256 * 1024;

} // namespace

CsvWriter::CsvWriter(std::ostream &out) : m_out(out)
{
    m_buffer.reserve(FlushBytes + 4096);
}

CsvWriter::~CsvWriter()
{
    flush();
}

void CsvWriter::writeByteOrderMark()
{
    m_buffer += "\xEF\xBB\xBF";
}

CsvWriter &CsvWriter::field(std::string_view text)
{
    if (m_rowStarted)
        m_buffer += ',';
    m_rowStarted = true;
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        m_buffer += text;
        return *this;
    }
    m_buffer += '"';
    for (const char c : text) {
        if (c == '"')
            m_buffer += '"';
        m_buffer += c;
    }
    m_buffer += '"';
    return *this;
}

void CsvWriter::endRow()
{
    m_buffer += "\r\n";
    m_rowStarted = false;
    if (m_buffer.size() >= FlushBytes)
        flush();
}

bool CsvWriter::flush()
{
    if (!m_buffer.empty()) {
        m_out.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        m_buffer.clear();
    }
    return static_cast<bool>(m_out);
}
