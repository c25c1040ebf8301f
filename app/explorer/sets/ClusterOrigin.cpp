#include "app/explorer/sets/ClusterOrigin.h"

#include <charconv>

namespace runsieve::app {

namespace {

std::string const start = "cluster ";

} // namespace

std::string clusterOrigin(int number, int count, std::string const& output, std::string const& mode)
{
  return start + std::to_string(number) + " of " + std::to_string(count) + " of " + output + " by " + mode;
}

std::optional<int> clusterOf(std::string const& origin)
{
  if (origin.compare(0, start.size(), start) != 0) return std::nullopt;
  int number = 0;
  auto const [end, error] =
      std::from_chars(origin.data() + start.size(), origin.data() + origin.size(), number);
  if (error != std::errc() || origin.compare(static_cast<std::size_t>(end - origin.data()), 4, " of ") != 0)
    return std::nullopt;
  return number;
}

} // namespace runsieve::app
