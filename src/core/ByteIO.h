// The one reader and the one writer of the little-endian values that make up
// both data files; texts are a 16-bit byte count and Windows-1252 bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
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

// Gives a reader its next bytes: writes at most capacity bytes at into and
// returns how many it wrote, 0 at the end.
using ByteSource = std::function<std::size_t(char *into, std::size_t capacity)>;

class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : m_bytes(bytes), m_size(bytes.size()) {}
    // Reads size bytes from source through a small window, so that a large file
    // is never held whole beside what is decoded from it.
    ByteReader(std::size_t size, ByteSource source);
    // A copy would read from the original's window.
    ByteReader(const ByteReader &) = delete;
    ByteReader &operator=(const ByteReader &) = delete;

    int16_t int16();
    // count values in a row, as the score tables hold them: one bounds check for all.
    void int16s(int16_t *values, std::size_t count);
    uint16_t uint16();
    int32_t int32();
    // Any nonzero value is true, whatever a writer put there.
    bool bool16();
    // A 16-bit byte count and that many Windows-1252 bytes, returned as UTF-8.
    std::string text();
    // Checks that count texts follow and returns their bytes, counts and all,
    // unconverted. Only on a reader of bytes in memory, which the result points into.
    std::string_view textsInPlace(std::size_t count);

    std::size_t offset() const { return m_start + m_pos; }
    std::size_t remaining() const { return m_size - offset(); }

    [[noreturn]] void failAt(std::size_t offset, const std::string &cause) const;

private:
    std::string_view take(std::size_t count);
    // Moves the unread bytes to the front of the window and fills it from the source.
    void refill(std::size_t count);

    std::string_view m_bytes; // the bytes at hand: all of them, or the window's
    std::size_t m_pos = 0;    // within m_bytes
    std::size_t m_start = 0;  // the offset of m_bytes in the file
    std::size_t m_size = 0;
    ByteSource m_source;
    std::string m_window;
};

// Takes the next piece of a file being written, in file order.
using ByteSink = std::function<void(std::string_view piece)>;

class ByteWriter {
public:
    ByteWriter() = default;
    // Passes the bytes on to sink in pieces of about pieceBytes as values are
    // written, so that a large file is never held whole; finish() passes the rest.
    ByteWriter(ByteSink sink, std::size_t pieceBytes);

    void int16(int16_t value);
    // count values in a row, appended at once.
    void int16s(const int16_t *values, std::size_t count);
    void uint16(uint16_t value);
    void int32(int32_t value);
    // True is written as -1, as the files have always held it.
    void bool16(bool value);
    // Bytes already in the files' form, written as they are.
    void raw(std::string_view bytes);
    // Throws TextTooLong, built from describe(), when the converted text does not
    // fit; nothing of it is written then.
    template <typename Describe> void text(std::string_view utf8, Describe &&describe)
    {
        // Converted straight behind its count, which is filled in afterwards.
        const std::size_t start = m_bytes.size();
        appendUint16(0);
        appendText(utf8);
        const std::size_t count = m_bytes.size() - start - 2;
        if (count > MaxTextBytes) {
            m_bytes.resize(start);
            throw TextTooLong(describe());
        }
        m_bytes[start] = static_cast<char>(count & 0xFF);
        m_bytes[start + 1] = static_cast<char>(count >> 8);
        passFullPiece();
    }

    // Room for a file of this many bytes, so a large one is not copied as it grows.
    void reserve(std::size_t bytes) { m_bytes.reserve(bytes); }
    // Without a sink: everything written. With one: what is not passed on yet.
    const std::string &bytes() const { return m_bytes; }
    // Passes what is left to the sink.
    void finish();

private:
    void appendUint16(uint16_t value);
    void appendText(std::string_view utf8);
    // Only between values, so that a text's count can still be filled in.
    void passFullPiece()
    {
        if (m_sink && m_bytes.size() >= m_pieceBytes) {
            finish();
        }
    }

    std::string m_bytes;
    ByteSink m_sink;
    std::size_t m_pieceBytes = 0;
};