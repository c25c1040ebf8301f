#include <runsieve/core/text/Utf8.h>

#include <cstddef>

namespace runsieve {

namespace {

constexpr std::uint32_t lastCharacter = 0x10FFFF;

bool isCharacter(std::uint32_t number)
{
  return number <= lastCharacter && (number < 0xD800 || number > 0xDFFF);
}

/// Bytes of the character at the front; 0 if they are no UTF-8.
std::size_t characterBytes(std::string_view text)
{
  auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  unsigned char const first = byte(0);
  if (first < 0x80) return 1;
  std::size_t const bytes = first >= 0xF0 ? 4 : (first >= 0xE0 ? 3 : 2);
  if (first < 0xC2 || first > 0xF4 || text.size() < bytes) return 0;
  std::uint32_t number = first & (0x7Fu >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    number = number << 6 | (byte(i) & 0x3Fu);
  }
  std::uint32_t const smallest = bytes == 4 ? 0x10000 : (bytes == 3 ? 0x800 : 0x80);
  return number >= smallest && isCharacter(number) ? bytes : 0;
}

bool isUtf8(std::string_view text)
{
  while (!text.empty()) {
    std::size_t const bytes = characterBytes(text);
    if (bytes == 0) return false;
    text.remove_prefix(bytes);
  }
  return true;
}

} // namespace

void appendUtf8(std::string& text, std::uint32_t character)
{
  if (!isCharacter(character)) character = 0xFFFD;
  auto const append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  auto const rest = [&](int shift) { append(0x80 | (character >> shift & 0x3F)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | character >> 6);
    rest(0);
  } else if (character < 0x10000) {
    append(0xE0 | character >> 12);
    rest(6);
    rest(0);
  } else {
    append(0xF0 | character >> 18);
    rest(12);
    rest(6);
    rest(0);
  }
}

std::string asUtf8(std::string_view bytes)
{
  if (isUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (char const byte : bytes) appendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

} // namespace runsieve
