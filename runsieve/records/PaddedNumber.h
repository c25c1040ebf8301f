#pragma once

#include <cstddef>
#include <string>

namespace runsieve {

/// A number from 0 to `last` with leading zeros, so that the names of all of them sort as the numbers do.
inline std::string paddedNumber(int number, int last)
{
  const std::string digits = std::to_string(number);
  return std::string(std::to_string(last).size() - digits.size(), '0') + digits;
}

} // namespace runsieve
