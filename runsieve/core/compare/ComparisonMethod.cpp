#include <runsieve/core/compare/ComparisonMethod.h>

#include <array>

namespace runsieve {

namespace {

constexpr std::array<char const*, 4> names = {"permutation", "holm", "bh", "none"};

} // namespace

char const* adjustmentName(Adjustment adjustment)
{
  return names.at(static_cast<std::size_t>(adjustment));
}

std::optional<Adjustment> adjustmentNamed(std::string_view name)
{
  for (std::size_t i = 0; i < names.size(); ++i)
    if (names[i] == name) return static_cast<Adjustment>(i);
  return std::nullopt;
}

double cutOf(ComparisonMethod const& method)
{
  double const largest = method.thresholds.largestP;
  return largest == 1.0 ? 1.0 : largest / static_cast<double>(method.gatesTried);
}

} // namespace runsieve
