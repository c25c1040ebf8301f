#include "app/explorer/parameters/ColumnCounts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace runsieve::app {

RunColumns::RunColumns(std::vector<double> const& values, AxisMap const& axis)
{
  places.reserve(values.size());
  for (double const value : values) {
    const double place = axis.place(value);
    std::uint16_t column = missing;
    if (place >= 0.0 && place <= 1.0)
      column = static_cast<std::uint16_t>(
          std::min(place * static_cast<double>(columns), static_cast<double>(columns - 1)));
    else if (place > 1.0)
      column = above;
    else if (!std::isnan(value))
      column = below;
    places.push_back(column);
  }
}

ColumnCounts::ColumnCounts(RunColumns const& runs, std::vector<std::uint8_t> const& mask) : ColumnCounts()
{
  const std::size_t size = std::min(runs.places.size(), mask.size());
  for (std::size_t run = 0; run < size; ++run) counts[runs.places[run]] += mask[run];
}

std::size_t ColumnCounts::total() const
{
  return std::accumulate(counts.begin(), counts.begin() + RunColumns::missing, std::size_t(0));
}

std::size_t ColumnCounts::onAxis() const
{
  return std::accumulate(counts.begin(), counts.begin() + RunColumns::columns, std::size_t(0));
}

std::vector<double> ColumnCounts::cumulated() const
{
  std::vector<double> shares(RunColumns::columns + 1);
  const std::size_t all = total();
  if (all == 0) return shares;
  std::size_t sum = below();
  shares[0] = static_cast<double>(sum) / static_cast<double>(all);
  for (std::size_t i = 0; i < RunColumns::columns; ++i) {
    sum += counts[i];
    shares[i + 1] = static_cast<double>(sum) / static_cast<double>(all);
  }
  return shares;
}

ColumnCounts& ColumnCounts::operator-=(ColumnCounts const& part)
{
  for (std::size_t i = 0; i < counts.size(); ++i) counts[i] -= part.counts[i];
  return *this;
}

} // namespace runsieve::app
