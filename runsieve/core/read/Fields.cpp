#include <runsieve/core/read/Fields.h>

#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <limits>

namespace runsieve {

namespace {

constexpr std::string_view blanks = " \t";

// Calls take(field) for each field, until it returns false.
template <class Take> void eachAtBlanks(std::string_view line, Take const& take)
{
  std::size_t at = line.find_first_not_of(blanks);
  while (at < line.size()) {
    std::size_t end = at;
    bool inQuotes = false;
    for (; end < line.size() && (inQuotes || blanks.find(line[end]) == std::string_view::npos); ++end)
      if (line[end] == '"') inQuotes = !inQuotes;
    if (!take(line.substr(at, end - at))) return;
    at = line.find_first_not_of(blanks, end);
  }
}

template <class Take> void eachField(std::string_view line, char delimiter, Take const& take)
{
  if (delimiter == ' ') {
    eachAtBlanks(line, take);
    return;
  }
  bool inQuotes = false;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i < line.size() && line[i] == '"') inQuotes = !inQuotes;
    if (i < line.size() && (inQuotes || line[i] != delimiter)) continue;
    if (!take(line.substr(begin, i - begin))) return;
    begin = i + 1;
  }
}

std::string_view withoutQuotes(std::string_view field)
{
  field = trimmed(field);
  if (field.size() >= 2 && field.front() == '"' && field.back() == '"')
    field = field.substr(1, field.size() - 2);
  return field;
}

bool sameIgnoringCase(std::string_view a, std::string_view lower)
{
  return a.size() == lower.size() && std::equal(a.begin(), a.end(), lower.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == y;
         });
}

// "1.#INF", "-1.#IND", "1.#QNAN00", "nan(ind)"
std::optional<double> oldSpecial(std::string_view text)
{
  bool const negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  bool const isNan = text.substr(0, 5) == "1.#IN" && text.substr(5, 1) != "F";
  if (isNan || text.substr(0, 4) == "1.#Q" || text.substr(0, 4) == "1.#S" ||
      sameIgnoringCase(text, "nan(ind)") || sameIgnoringCase(text, "nan(snan)"))
    return std::numeric_limits<double>::quiet_NaN();
  if (text.substr(0, 6) != "1.#INF") return std::nullopt;
  double const infinity = std::numeric_limits<double>::infinity();
  return negative ? -infinity : infinity;
}

} // namespace

std::vector<std::string_view> splitFields(std::string_view line, char delimiter, std::size_t most)
{
  std::vector<std::string_view> fields;
  eachField(line, delimiter, [&](std::string_view field) {
    if (fields.size() < most) fields.push_back(field);
    return fields.size() < most;
  });
  return fields;
}

std::size_t countFields(std::string_view line, char delimiter)
{
  std::size_t count = 0;
  eachField(line, delimiter, [&](std::string_view) {
    ++count;
    return true;
  });
  return count;
}

std::string fieldText(std::string_view field)
{
  bool const isQuoted = trimmed(field).substr(0, 1) == "\"";
  std::string_view const inside = withoutQuotes(field);
  std::string text;
  for (std::size_t i = 0; i < inside.size(); ++i) {
    text += inside[i];
    if (isQuoted && inside[i] == '"' && inside.substr(i + 1, 1) == "\"") ++i;
  }
  return text;
}

std::optional<double> fieldNumber(std::string_view field, char decimal)
{
  std::string_view const text = trimmed(withoutQuotes(field));
  if (decimal != '.' && text.find('.') != std::string_view::npos) return oldSpecial(text);
  if (decimal == '.' || text.find(decimal) == std::string_view::npos) {
    if (auto const number = parseNumber(text)) return number;
    return oldSpecial(text);
  }
  constexpr std::size_t longestNumber = 4096;
  if (text.size() > longestNumber || std::count(text.begin(), text.end(), decimal) != 1) return std::nullopt;
  std::string withPoint(text);
  withPoint[withPoint.find(decimal)] = '.';
  return parseNumber(withPoint);
}

bool isUsualMissing(std::string_view text)
{
  constexpr std::array<std::string_view, 6> words = {"", "na", "n/a", "none", "null", "#n/a"};
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return sameIgnoringCase(text, word); });
}

std::vector<double> missingNumbers(std::vector<std::string> const& missing, char decimal)
{
  std::vector<double> numbers;
  for (std::string const& text : missing) {
    auto number = fieldNumber(text, decimal);
    if (!number) number = fieldNumber(text, '.');
    if (number && !std::isnan(*number)) numbers.push_back(*number);
  }
  return numbers;
}

std::string toUtf8(std::string_view text, bool& converted)
{
  std::string result = asUtf8(text);
  converted = converted || result != text;
  return result;
}

} // namespace runsieve
