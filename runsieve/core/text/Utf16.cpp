#include <runsieve/core/text/Utf16.h>

#include <runsieve/core/text/Utf8.h>

#include <cstddef>
#include <cstdint>

namespace runsieve {

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
      appendUtf8(text, 0x10000 + ((code - 0xD800) << 10) + (unit(at + 2) - 0xDC00));
      at += 2;
    } else {
      appendUtf8(text, isHigh || isLow ? replacement : code);
    }
  }
  if (at < bytes.size()) appendUtf8(text, replacement);
  return text;
}

} // namespace runsieve
