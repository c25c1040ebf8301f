#include <runsieve/core/text/ShownText.h>

#include <array>

namespace runsieve {

namespace {

/// Whether a byte continues a character.
bool continues(char c)
{
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Where the character of a number begins.
std::size_t startOf(std::string const& text, std::size_t character)
{
  std::size_t at = 0;
  for (; at < text.size(); ++at)
    if (!continues(text[at]) && character-- == 0) break;
  return at;
}

} // namespace

std::string printable(std::string_view text)
{
  constexpr std::array<char, 16> digits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                           '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
  std::string shown;
  for (char const c : text) {
    auto const byte = static_cast<unsigned char>(c);
    if (byte >= 0x20U && byte != 0x7FU)
      shown += c;
    else
      shown += std::string("\\x") + digits.at(byte >> 4U) + digits.at(byte & 0xFU);
  }
  return shown;
}

std::size_t shownWidth(std::string_view text)
{
  std::size_t width = 0;
  for (char const c : text) width += continues(c) ? 0 : 1;
  return width;
}

std::string shortened(std::string const& text, std::size_t most)
{
  std::size_t const width = shownWidth(text);
  if (width <= most) return text;
  std::size_t const behind = (most - 1) / 2;
  std::size_t const before = most - 1 - behind;
  return text.substr(0, startOf(text, before)) + "\u2026" + text.substr(startOf(text, width - behind));
}

} // namespace runsieve
