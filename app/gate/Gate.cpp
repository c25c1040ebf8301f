#include "app/gate/Gate.h"

#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>

#include <cctype>
#include <cmath>
#include <string_view>

namespace runsieve::app {

namespace {

constexpr char example[] =
    R"(write OUTPUT @ TIME[..TIME] in LOW..HIGH, for example "Molecule: A @ 10..12 in 2..5")";

/// Reads what follows the '@', piece by piece.
class GateReader
{
public:
  GateReader(std::string_view wholeGate, std::string_view text) : whole(wholeGate), rest(text) {}

  double number(char const* what)
  {
    skipBlanks();
    std::string_view const digits = rest.substr(0, numberLength());
    auto const value = digits.empty() ? std::nullopt : parseNumber(digits);
    if (!value) fail(std::string("expected ") + what + ", found " + found());
    rest.remove_prefix(digits.size());
    return *value;
  }

  bool accept(std::string_view token)
  {
    skipBlanks();
    if (rest.substr(0, token.size()) != token) return false;
    rest.remove_prefix(token.size());
    return true;
  }

  void expect(std::string_view token, char const* where)
  {
    if (!accept(token)) fail("expected \"" + std::string(token) + "\" " + where + ", found " + found());
  }

  void expectEnd()
  {
    skipBlanks();
    if (!rest.empty()) fail("after the value range stands " + found());
  }

  [[noreturn]] void fail(std::string const& why) const
  {
    throw GateError("gate " + quoted(whole) + ": " + why + "; " + example);
  }

private:
  void skipBlanks() { rest = trimmed(rest); }

  std::string found() const { return rest.empty() ? "the end of the text" : quoted(rest); }

  char at(std::size_t i) const { return i < rest.size() ? rest[i] : '\0'; }

  std::size_t afterDigits(std::size_t i) const
  {
    while (std::isdigit(static_cast<unsigned char>(at(i))) != 0) ++i;
    return i;
  }

  std::size_t afterWord(std::size_t i, std::string_view word) const
  {
    for (std::size_t k = 0; k < word.size(); ++k)
      if (std::tolower(static_cast<unsigned char>(at(i + k))) != word[k]) return i;
    return i + word.size();
  }

  // Of the number at the start, 0 if there is none. The ".." of a range is no part of it: "10..12" begins
  // with 10.
  std::size_t numberLength() const
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

  std::string_view whole;
  std::string_view rest;
};

} // namespace

Gate parseGate(std::string const& text)
{
  std::size_t const at = text.rfind('@');
  if (at == std::string::npos) GateReader(text, {}).fail("there is no \"@\"");
  GateReader reader(text, std::string_view(text).substr(at + 1));
  Gate gate;
  gate.output = trimmed(std::string_view(text).substr(0, at));
  if (gate.output.empty()) reader.fail("there is no output before \"@\"");
  gate.timeFirst = reader.number("a time");
  gate.timeLast = reader.accept("..") ? reader.number("a time after \"..\"") : gate.timeFirst;
  if (!std::isfinite(gate.timeFirst) || !std::isfinite(gate.timeLast)) reader.fail("a time must be finite");
  reader.expect("in", "after the time");
  gate.low = reader.number("the lower value");
  reader.expect("..", "between the two values");
  gate.high = reader.number("the upper value");
  reader.expectEnd();
  return gate;
}

std::string formatGate(Gate const& gate)
{
  std::string time = decimal(gate.timeFirst);
  if (gate.timeLast != gate.timeFirst) time += ".." + decimal(gate.timeLast);
  return gate.output + " @ " + time + " in " + decimal(gate.low) + ".." + decimal(gate.high);
}

} // namespace runsieve::app
