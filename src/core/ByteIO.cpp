#include "core/ByteIO.h"

#include "core/Cp1252.h"

#include <algorithm>
#include <cstring>
#include <utility>

ReadError::ReadError(std::size_t offset, const std::string &cause)
    : std::runtime_error(cause), m_offset(offset)
{
}

namespace {

// Large enough that refilling costs few system calls, small enough to come from
// memory the program already uses rather than from fresh pages.
constexpr std::size_t WindowBytes = 64 * 1024;

// The files are little-endian; so is nearly every machine, where a table of
// 16-bit values is copied as it is instead of byte by byte.
constexpr bool HostIsLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

} // namespace

ByteReader::ByteReader(std::size_t size, ByteSource source)
    : m_size(size), m_source(std::move(source))
{
}

std::string_view ByteReader::take(std::size_t count)
{
    if (count > remaining()) {
        failAt(offset(), "the file ends too early (" + std::to_string(count) + " bytes needed, " +
                             std::to_string(remaining()) + " left)");
    }
    if (count > m_bytes.size() - m_pos) {
        refill(count);
    }
    const std::string_view part = m_bytes.substr(m_pos, count);
    m_pos += count;
    return part;
}

void ByteReader::refill(std::size_t count)
{
    const std::size_t unread = m_bytes.size() - m_pos;
    if (!m_source) {
        failAt(offset(), "the file ends too early");
    }
    if (unread > 0) {
        std::memmove(m_window.data(), m_bytes.data() + m_pos, unread);
    }
    m_start += m_pos;
    m_pos = 0;
    const std::size_t wanted = std::min(std::max(count, WindowBytes), m_size - m_start);
    if (m_window.size() < wanted) {
        m_window.resize(wanted);
    }
    std::size_t filled = unread;
    while (filled < wanted) {
        const std::size_t got = m_source(m_window.data() + filled, wanted - filled);
        if (got == 0) {
            break;
        }
        filled += got;
    }
    m_bytes = std::string_view(m_window.data(), filled);
    if (filled < count) {
        // The file was shorter than its size said when it was opened.
        failAt(offset(), "the file ends too early (" + std::to_string(count) + " bytes needed, " +
                             std::to_string(filled) + " left)");
    }
}

uint16_t ByteReader::uint16()
{
    const std::string_view b = take(2);
    return static_cast<uint16_t>(static_cast<unsigned char>(b[0]) |
                                 (static_cast<unsigned char>(b[1]) << 8));
}

int16_t ByteReader::int16()
{
    return static_cast<int16_t>(uint16());
}

void ByteReader::int16s(int16_t *values, std::size_t count)
{
    const std::string_view b = take(2 * count);
    if constexpr (HostIsLittleEndian) {
        std::memcpy(values, b.data(), b.size());
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            values[i] = static_cast<int16_t>(static_cast<unsigned char>(b[2 * i]) |
                                             (static_cast<unsigned char>(b[2 * i + 1]) << 8));
        }
    }
}

int32_t ByteReader::int32()
{
    const std::string_view b = take(4);
    uint32_t value = 0;
    for (int i = 3; i >= 0; --i) {
        value = (value << 8) | static_cast<unsigned char>(b[i]);
    }
    return static_cast<int32_t>(value);
}

bool ByteReader::bool16()
{
    return uint16() != 0;
}

std::string ByteReader::text()
{
    const uint16_t count = uint16();
    return cp1252ToUtf8(take(count));
}

std::string_view ByteReader::textsInPlace(std::size_t count)
{
    if (m_source) {
        throw std::logic_error("textsInPlace needs the bytes in memory");
    }
    // One pass over the counts, with no text copied: this is how a large bank
    // is checked on loading, so it is kept to a few instructions a text.
    const auto *bytes = reinterpret_cast<const unsigned char *>(m_bytes.data());
    const std::size_t end = m_bytes.size();
    std::size_t pos = m_pos;
    for (std::size_t i = 0; i < count; ++i) {
        const bool countFits = end - pos >= 2;
        const std::size_t length =
            countFits ? bytes[pos] | (static_cast<std::size_t>(bytes[pos + 1]) << 8) : 0;
        if (!countFits || end - pos - 2 < length) {
            // Read the text that does not fit the ordinary way, for the usual error.
            m_pos = pos;
            take(uint16());
        }
        pos += 2 + length;
    }
    const std::string_view texts = m_bytes.substr(m_pos, pos - m_pos);
    m_pos = pos;
    return texts;
}

void ByteReader::failAt(std::size_t offset, const std::string &cause) const
{
    throw ReadError(offset, cause);
}

ByteWriter::ByteWriter(ByteSink sink, std::size_t pieceBytes)
    : m_sink(std::move(sink)), m_pieceBytes(pieceBytes)
{
    m_bytes.reserve(pieceBytes + pieceBytes / 4);
}

void ByteWriter::finish()
{
    if (m_sink && !m_bytes.empty()) {
        m_sink(m_bytes);
        m_bytes.clear();
    }
}

void ByteWriter::appendUint16(uint16_t value)
{
    const char bytes[2] = {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
    m_bytes.append(bytes, sizeof bytes);
}

void ByteWriter::uint16(uint16_t value)
{
    appendUint16(value);
    passFullPiece();
}

void ByteWriter::int16(int16_t value)
{
    uint16(static_cast<uint16_t>(value));
}

void ByteWriter::int16s(const int16_t *values, std::size_t count)
{
    if constexpr (HostIsLittleEndian) {
        m_bytes.append(reinterpret_cast<const char *>(values), 2 * count);
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            appendUint16(static_cast<uint16_t>(values[i]));
        }
    }
    passFullPiece();
}

void ByteWriter::int32(int32_t value)
{
    const auto bits = static_cast<uint32_t>(value);
    char bytes[4];
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
    }
    m_bytes.append(bytes, sizeof bytes);
    passFullPiece();
}

void ByteWriter::bool16(bool value)
{
    int16(value ? -1 : 0);
}

void ByteWriter::raw(std::string_view bytes)
{
    if (m_sink && bytes.size() >= m_pieceBytes) {
        finish();
        m_sink(bytes);
        return;
    }
    m_bytes.append(bytes);
    passFullPiece();
}

void ByteWriter::appendText(std::string_view utf8)
{
    appendUtf8AsCp1252(m_bytes, utf8);
}
