#include <runsieve/core/inference/CategoryComparison.h>

#include <cstdlib>
#include <vector>

namespace runsieve {

CategoryComparison compareCategories(std::int32_t const* categories, std::uint8_t const* passes,
                                     std::size_t runs, std::size_t count)
{
  struct Counts
  {
    std::uint32_t passing = 0;
    std::uint32_t others = 0;
  };
  std::vector<Counts> counts(count);
  CategoryComparison result;
  for (std::size_t run = 0; run < runs; ++run) {
    if (categories[run] < 0 || static_cast<std::size_t>(categories[run]) >= count) continue;
    Counts& ofCategory = counts[static_cast<std::size_t>(categories[run])];
    bool const passing = passes[run] != 0;
    ++(passing ? ofCategory.passing : ofCategory.others);
    ++(passing ? result.passing : result.others);
  }
  for (std::size_t category = 0; category < count; ++category) {
    Counts const& of = counts[category];
    std::int64_t const difference =
        std::int64_t{of.passing} * result.others - std::int64_t{of.others} * result.passing;
    if (std::abs(difference) > std::abs(result.difference)) {
      result.difference = difference;
      result.category = static_cast<std::int32_t>(category);
    }
  }
  result.d = static_cast<double>(result.difference) /
             (static_cast<double>(result.passing) * static_cast<double>(result.others));
  return result;
}

} // namespace runsieve
