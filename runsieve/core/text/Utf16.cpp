#include <runsieve/core/text/Utf16.h>

#include <cstddef>
#include <cstdint>

namespace runsieve {

namespace {

void append(std::string& text, std::uint32_t code)
{
  auto const tail = [&](unsigned shift) { text += static_cast<char>(0x80u | ((code >> shift) & 0x3Fu)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0u | (code >> 6));
    tail(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0u | (code >> 12));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0u | (code >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

} // namespace

bool isUtf16(std::string_view bytes)
{
  std::string_view const mark = bytes.substr(0, 2);
  return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

std::string fromUtf16(std::string_view bytes)
{
  constexpr std::uint32_t replacement = 0xFFFD;
  bool const bigEndian = bytes.substr(0, 2) == "\xFE\xFF";
  auto const unit = [&](std::size_t at) {
    auto const first = static_cast<unsigned char>(bytes[at]);
    auto const second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<std::uint32_t>(bigEndian ? (first << 8 | second) : (second << 8 | first));
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  std::size_t at = 2;
  for (; at + 1 < bytes.size(); at += 2) {
    std::uint32_t const code = unit(at);
    bool const isHigh = code >= 0xD800 && code < 0xDC00;
    bool const isLow = code >= 0xDC00 && code < 0xE000;
    bool const hasLow = isHigh && at + 3 < bytes.size() && unit(at + 2) >= 0xDC00 && unit(at + 2) < 0xE000;
    if (hasLow) {
      append(text, 0x10000 + ((code - 0xD800) << 10) + (unit(at + 2) - 0xDC00));
      at += 2;
    } else {
      append(text, isHigh || isLow ? replacement : code);
    }
  }
  if (at < bytes.size()) append(text, replacement);
  return text;
}

} // namespace runsieve
