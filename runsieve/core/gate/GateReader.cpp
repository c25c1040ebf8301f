#include <runsieve/core/gate/GateReader.h>

#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>

namespace runsieve {

namespace {

bool isDigit(char c)
{
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

} // namespace

void GateReader::fail(std::string const& why) const
{
  throw GateError("gate " + quoted(whole) + ": " + why + "; " + example);
}

void GateReader::failExpecting(std::string const& what) const
{
  fail("expected " + what + ", found " + (rest.empty() ? "the end of the text" : quoted(rest)));
}

void GateReader::skipBlanks()
{
  rest = trimmed(rest);
}

bool GateReader::startsWith(std::string_view token)
{
  skipBlanks();
  return rest.substr(0, token.size()) == token;
}

bool GateReader::accept(std::string_view token)
{
  if (!startsWith(token)) return false;
  rest.remove_prefix(token.size());
  return true;
}

void GateReader::expect(std::string_view token, char const* where)
{
  if (!accept(token)) failExpecting('"' + std::string(token) + "\" " + where);
}

bool GateReader::atEnd()
{
  skipBlanks();
  return rest.empty();
}

std::string_view GateReader::remaining()
{
  skipBlanks();
  return rest;
}

void GateReader::expectEnd(char const* what)
{
  if (!atEnd()) fail(std::string("after ") + what + " stands " + quoted(rest));
}

std::size_t GateReader::afterDigits(std::size_t i) const
{
  while (isDigit(at(i))) ++i;
  return i;
}

std::size_t GateReader::afterWord(std::size_t i, std::string_view word) const
{
  for (std::size_t k = 0; k < word.size(); ++k)
    if (std::tolower(static_cast<unsigned char>(at(i + k))) != word[k]) return i;
  return i + word.size();
}

// Of the number at the start, 0 if there is none. The ".." of a range is no part of it: "10..12" begins
// with 10.
std::size_t GateReader::numberLength() const
{
  std::size_t const sign = at(0) == '-' || at(0) == '+' ? 1 : 0;
  for (std::string_view infinite : {"infinity", "inf"})
    if (afterWord(sign, infinite) > sign) return afterWord(sign, infinite);
  std::size_t end = afterDigits(sign);
  std::size_t digits = end - sign;
  if (at(end) == '.' && at(end + 1) != '.') {
    std::size_t const fraction = afterDigits(end + 1);
    digits += fraction - end - 1;
    end = fraction;
  }
  if (digits == 0) return 0;
  if (at(end) != 'e' && at(end) != 'E') return end;
  std::size_t const exponent = end + (at(end + 1) == '-' || at(end + 1) == '+' ? 2 : 1);
  return afterDigits(exponent) > exponent ? afterDigits(exponent) : end;
}

std::optional<double> GateReader::acceptNumber()
{
  skipBlanks();
  std::string_view const digits = rest.substr(0, numberLength());
  auto const value = digits.empty() ? std::nullopt : parseNumber(digits);
  if (value) rest.remove_prefix(digits.size());
  return value;
}

double GateReader::number(char const* what)
{
  auto const value = acceptNumber();
  if (!value) failExpecting(what);
  return *value;
}

int GateReader::wholeNumber(char const* what)
{
  skipBlanks();
  int value = 0;
  std::size_t const length = afterDigits(0);
  auto const [end, error] = std::from_chars(rest.data(), rest.data() + length, value);
  if (length == 0 || error != std::errc()) failExpecting(what);
  rest.remove_prefix(length);
  return value;
}

double GateReader::time(char const* what)
{
  double const value = number(what);
  if (!std::isfinite(value)) fail("a time must be finite");
  return value;
}

GateSpan GateReader::span()
{
  GateSpan span;
  if (!startsWith("..")) span.first = time("a time");
  if (!accept("..")) {
    span.last = span.first;
    return span;
  }
  bool const isOpen = atEnd() || (startsWith("in") && numberLength() == 0); // "in" itself, not "inf"
  if (!isOpen) span.last = time("a time after \"..\"");
  return span;
}

GateRange GateReader::range()
{
  GateRange range;
  if (!startsWith("..")) range.low = number("the lower value");
  expect("..", "between the two values");
  if (!atEnd()) range.high = number("the upper value");
  return range;
}

std::string GateReader::quotedText()
{
  skipBlanks();
  std::string text;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"' && at(i + 1) != '"') {
      rest.remove_prefix(i + 1);
      return text;
    }
    text += rest[i];
    if (rest[i] == '"') ++i;
  }
  fail("the quote before " + quoted(rest.substr(1)) + " is not closed");
}

GateReader::Item GateReader::item(char const* what)
{
  if (startsWith("\"")) return {quotedText(), true};
  std::string_view const text = trimmed(rest.substr(0, rest.find(',')));
  if (text.empty() || text.find('"') != std::string_view::npos) failExpecting(what);
  rest.remove_prefix(std::min(rest.find(','), rest.size()));
  return {std::string(text), false};
}

std::vector<GateReader::Item> GateReader::items(char const* what)
{
  std::vector<Item> all;
  do all.push_back(item(what));
  while (accept(","));
  if (!atEnd()) failExpecting("a comma");
  return all;
}

} // namespace runsieve
