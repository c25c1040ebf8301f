#include "app/explorer/tables/NaturalOrder.h"

#include <cstddef>

namespace runsieve::app {

namespace {

bool isDigit(char character)
{
  return character >= '0' && character <= '9';
}

/// Takes the digits with which a text begins, without leading zeros.
std::string_view takeNumber(std::string_view& text)
{
  std::size_t end = 0;
  while (end < text.size() && isDigit(text[end])) ++end;
  std::string_view number = text.substr(0, end);
  text.remove_prefix(end);
  while (number.size() > 1 && number.front() == '0') number.remove_prefix(1);
  return number;
}

} // namespace

bool standsBefore(std::string_view a, std::string_view b)
{
  const std::string_view wholeA = a;
  const std::string_view wholeB = b;
  while (!a.empty() && !b.empty()) {
    if (isDigit(a.front()) && isDigit(b.front())) {
      const std::string_view x = takeNumber(a);
      const std::string_view y = takeNumber(b);
      if (x.size() != y.size()) return x.size() < y.size();
      if (x != y) return x < y;
    } else {
      if (a.front() != b.front())
        return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front());
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  if (a.empty() && b.empty()) return wholeA < wholeB;
  return a.empty();
}

} // namespace runsieve::app
