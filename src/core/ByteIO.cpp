#include "core/ByteIO.h"

#include "core/Cp1252.h"

ReadError::ReadError(std::size_t offset, const std::string &cause)
    : std::runtime_error(cause), m_offset(offset)
{
}

std::string_view ByteReader::take(std::size_t count)
{
    if (count > remaining()) {
        failAt(m_pos, "the file ends too early (" + std::to_string(count) + " bytes needed, " +
                          std::to_string(remaining()) + " left)");
    }
    const std::string_view part = m_bytes.substr(m_pos, count);
    m_pos += count;
    return part;
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
    return Cp1252ToUtf8(take(count));
}

void ByteReader::failAt(std::size_t offset, const std::string &cause) const
{
    throw ReadError(offset, cause);
}

void ByteReader::expectEnd() const
{
    if (remaining() != 0) {
        failAt(m_pos, std::to_string(remaining()) + " unexpected bytes follow the end of the data");
    }
}

void ByteWriter::uint16(uint16_t value)
{
    m_bytes += static_cast<char>(value & 0xFF);
    m_bytes += static_cast<char>(value >> 8);
}

void ByteWriter::int16(int16_t value)
{
    uint16(static_cast<uint16_t>(value));
}

void ByteWriter::int32(int32_t value)
{
    const auto bits = static_cast<uint32_t>(value);
    for (int i = 0; i < 4; ++i) {
        m_bytes += static_cast<char>((bits >> (8 * i)) & 0xFF);
    }
}

void ByteWriter::bool16(bool value)
{
    int16(value ? -1 : 0);
}

std::string ByteWriter::EncodeText(std::string_view utf8)
{
    return Utf8ToCp1252(utf8);
}
