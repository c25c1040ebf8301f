#include "app/explorer/charts/StackedPlaces.h"

#include <algorithm>
#include <cstddef>

namespace runsieve::app {

namespace {

/// Labels that stand one at the other.
struct Block
{
  double sum = 0.0; ///< of their wanted places, less the labels before each
  std::size_t size = 0;

  [[nodiscard]] double mean() const { return sum / static_cast<double>(size); }
};

} // namespace

std::vector<double> stackedPlaces(std::vector<double> const& wanted, double height, double low, double high)
{
  std::vector<Block> blocks;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    blocks.push_back({wanted[i] - height * static_cast<double>(i), 1});
    while (blocks.size() > 1 && blocks.back().mean() < blocks[blocks.size() - 2].mean()) {
      const Block last = blocks.back();
      blocks.pop_back();
      blocks.back().sum += last.sum;
      blocks.back().size += last.size;
    }
  }
  const double most = std::max(low, high - height * static_cast<double>(wanted.size()));
  std::vector<double> places;
  for (Block const& block : blocks)
    for (std::size_t i = 0; i < block.size; ++i)
      places.push_back(std::clamp(block.mean(), low, most) + height * static_cast<double>(places.size()));
  return places;
}

} // namespace runsieve::app
