#pragma once

#include <QByteArray>

#include <cstdint>
#include <cstring>
#include <string>

namespace runsieve::test {

/// Writes a dump by hand, byte by byte, without the stream that the library writes it with.
class DumpBytes
{
public:
  DumpBytes& number(std::int64_t value) { return bigEndian(static_cast<std::uint32_t>(value), 4); }
  DumpBytes& flag(bool value) { return bigEndian(value, 1); }
  DumpBytes& real(double value)
  {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bigEndian(bits, 8);
  }
  DumpBytes& text(std::u16string const& value)
  {
    number(static_cast<std::int64_t>(2 * value.size()));
    for (char16_t unit : value) bigEndian(unit, 2);
    return *this;
  }
  DumpBytes& nullText() { return number(-1); }

  [[nodiscard]] QByteArray const& bytes() const { return content; }

private:
  DumpBytes& bigEndian(std::uint64_t value, int size)
  {
    for (int byte = size - 1; byte >= 0; --byte)
      content.append(static_cast<char>(value >> (8 * byte) & 0xff));
    return *this;
  }

  QByteArray content;
};

} // namespace runsieve::test
