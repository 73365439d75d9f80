// The one reader and the one writer of the little-endian values that make up
// both data files; texts are a 16-bit byte count and Windows-1252 bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

// The longest text a 16-bit byte count can describe.
constexpr std::size_t MaxTextBytes = 0xFFFF;

// A value could not be read, or was read and makes no sense.
class ReadError : public std::runtime_error {
public:
    ReadError(std::size_t offset, const std::string &cause);
    std::size_t offset() const { return m_offset; }

private:
    std::size_t m_offset;
};

// A text too long for its byte count; names the text.
class TextTooLong : public std::length_error {
public:
    explicit TextTooLong(const std::string &which) : std::length_error(which) {}
};

class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : m_bytes(bytes) {}

    int16_t int16();
    uint16_t uint16();
    int32_t int32();
    // Any nonzero value is true, whatever a writer put there.
    bool bool16();
    // A 16-bit byte count and that many Windows-1252 bytes, returned as UTF-8.
    std::string text();

    std::size_t offset() const { return m_pos; }
    std::size_t remaining() const { return m_bytes.size() - m_pos; }

    [[noreturn]] void failAt(std::size_t offset, const std::string &cause) const;
    // Bytes left over after the last value mean the file is not what it claims.
    void expectEnd() const;

private:
    std::string_view take(std::size_t count);

    std::string_view m_bytes;
    std::size_t m_pos = 0;
};

class ByteWriter {
public:
    void int16(int16_t value);
    void uint16(uint16_t value);
    void int32(int32_t value);
    // True is written as -1, as the files have always held it.
    void bool16(bool value);
    // Throws TextTooLong, built from describe(), when the converted text does not fit.
    template <typename Describe> void text(std::string_view utf8, Describe &&describe)
    {
        const std::string bytes = EncodeText(utf8);
        if (bytes.size() > MaxTextBytes) {
            throw TextTooLong(describe());
        }
        uint16(static_cast<uint16_t>(bytes.size()));
        m_bytes += bytes;
    }

    const std::string &bytes() const { return m_bytes; }

private:
    static std::string EncodeText(std::string_view utf8);

    std::string m_bytes;
};
