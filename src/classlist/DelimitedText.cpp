#include "DelimitedText.h"

#include <array>

namespace {

constexpr char Quote = '"';

bool blank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

char guessDelimiter(std::string_view text)
{
    constexpr std::array<char, 3> candidates = {',', ';', '\t'};
    std::array<std::size_t, 3> counts{};
    bool quoted = false;
    for (const char c : text) {
        if (c == Quote) {
            quoted = !quoted;
        } else if (!quoted && (c == '\n' || c == '\r')) {
            break;
        } else if (!quoted) {
            for (std::size_t i = 0; i < candidates.size(); ++i) {
                counts[i] += c == candidates[i] ? 1 : 0;
            }
        }
    }
    std::size_t best = 0;
    for (std::size_t i = 1; i < candidates.size(); ++i) {
        if (counts[i] > counts[best]) {
            best = i;
        }
    }
    return candidates[best];
}

DelimitedReader::DelimitedReader(std::string_view text, char delimiter)
    : m_text(text), m_delimiter(delimiter)
{
}

bool DelimitedReader::next(std::vector<std::string> &fields)
{
    fields.clear();
    if (m_pos >= m_text.size()) {
        return false;
    }
    for (;;) {
        readField(fields.emplace_back());
        if (m_pos >= m_text.size()) {
            return true;
        }
        const char stop = m_text[m_pos++];
        if (stop != m_delimiter) {
            // A line break: CR LF counts once.
            if (stop == '\r' && m_pos < m_text.size() && m_text[m_pos] == '\n') {
                ++m_pos;
            }
            return true;
        }
    }
}

void DelimitedReader::readField(std::string &field)
{
    std::size_t pos = m_pos;
    std::size_t start = pos;
    while (start < m_text.size() && blank(m_text[start]) && m_text[start] != m_delimiter) {
        ++start;
    }
    if (start < m_text.size() && m_text[start] == Quote) {
        pos = start + 1;
        for (;;) {
            const std::size_t close = m_text.find(Quote, pos);
            if (close == std::string_view::npos) {
                field.append(m_text.substr(pos));
                m_pos = m_text.size();
                return;
            }
            field.append(m_text.substr(pos, close - pos));
            pos = close + 1;
            if (pos < m_text.size() && m_text[pos] == Quote) {
                field += Quote;
                ++pos;
                continue;
            }
            break;
        }
    }
    const char stops[] = {m_delimiter, '\r', '\n'};
    std::size_t end = m_text.find_first_of(std::string_view(stops, sizeof stops), pos);
    if (end == std::string_view::npos) {
        end = m_text.size();
    }
    field.append(m_text.substr(pos, end - pos));
    m_pos = end;
}
