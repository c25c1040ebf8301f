#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace runsieve {

namespace {

constexpr std::string_view blanks = " \t";

bool isOutOfRange(std::string_view number)
{
  double value = 0.0;
  auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  return error == std::errc::result_out_of_range && end == number.data() + number.size();
}

// std::from_chars reports too large and too small numbers alike; strtod tells them apart.
std::optional<double> tinyNumber(std::string_view number)
{
  double value = std::strtod(std::string(number).c_str(), nullptr);
  if (value > 1.0 || value < -1.0) return std::nullopt;
  return value;
}

std::string_view withoutQuotesAndPlus(std::string_view field)
{
  field = trimmed(field);
  if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
    field = trimmed(field.substr(1, field.size() - 2));
  if (field.size() > 1 && field.front() == '+' && field[1] != '-') field.remove_prefix(1);
  return field;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
  auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<double> parseNumber(std::string_view field)
{
  std::string_view number = withoutQuotesAndPlus(field);
  double value = 0.0;
  auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (end != number.data() + number.size() || number.empty()) return std::nullopt;
  if (error == std::errc::result_out_of_range) return tinyNumber(number);
  if (error != std::errc()) return std::nullopt;
  return value;
}

std::string quoted(std::string_view field)
{
  constexpr std::size_t longest = 40;
  constexpr char hex[] = "0123456789abcdef";
  std::string text = "\"";
  std::size_t length = std::min(longest, field.size());
  auto const continues = [&](std::size_t at) {
    return at < field.size() && (static_cast<unsigned char>(field[at]) & 0xC0U) == 0x80U;
  };
  constexpr std::size_t longestCharacter = 4;
  for (std::size_t i = 1; i < longestCharacter && continues(length) && length > 0; ++i) --length;
  for (char c : field.substr(0, length)) {
    auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7f)
      text += {'\\', 'x', hex[byte >> 4], hex[byte & 15]};
    else
      text += c;
  }
  return text + (field.size() > length ? "...\"" : "\"");
}

std::string numberFault(std::string_view field)
{
  std::string_view number = withoutQuotesAndPlus(field);
  if (number.empty()) return "expected a number, found an empty field";
  if (number.find('\0') != std::string_view::npos) return "binary data, not text";
  if (isOutOfRange(number)) return "the number " + quoted(number) + " is too large";
  std::string fault = "expected a number, found " + quoted(number);
  if (std::count(number.begin(), number.end(), ',') == 1) {
    std::string withPoint(number);
    withPoint[withPoint.find(',')] = '.';
    if (parseNumber(withPoint)) fault += " (write decimals with a point)";
  }
  return fault;
}

} // namespace runsieve
