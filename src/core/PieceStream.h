// A stream buffer that hands what a stream is given to a writer piece by piece,
// so that what a stream writes can go into an atomic save (AtomicFile.h) without
// being held whole in memory.
#pragma once

#include <functional>
#include <streambuf>
#include <string_view>

class PieceStreamBuf : public std::streambuf {
public:
    explicit PieceStreamBuf(const std::function<void(std::string_view)> &write) : m_write(write) {}

protected:
    std::streamsize xsputn(const char *text, std::streamsize count) override
    {
        m_write(std::string_view(text, static_cast<std::size_t>(count)));
        return count;
    }
    int_type overflow(int_type c) override
    {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            const char one = traits_type::to_char_type(c);
            m_write(std::string_view(&one, 1));
        }
        return traits_type::not_eof(c);
    }

private:
    const std::function<void(std::string_view)> &m_write;
};
