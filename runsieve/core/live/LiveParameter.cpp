#include <runsieve/core/live/LiveParameter.h>

#include <cmath>
#include <limits>
#include <utility>

namespace runsieve {

namespace {

constexpr std::uint32_t NO_LEVEL = std::numeric_limits<std::uint32_t>::max();

/// Up to one level for as many runs as a word of bits, counts are the smaller ones.
constexpr std::size_t RUNS_PER_LEVEL = 64;

/// Of all runs of the scan; NaN, as if they had none, of those that are not compared.
std::vector<double> comparedValues(std::vector<double> values, RunSet const& eligible)
{
  for (std::size_t run = 0; run < values.size(); ++run)
    if (!eligible.contains(run)) values[run] = std::numeric_limits<double>::quiet_NaN();
  return values;
}

} // namespace

LiveParameter::LiveParameter(Scan const& scan, std::size_t parameter, RunSet const& eligible)
    : position(parameter), isText(scan.parameters[parameter].isText()),
      marks(LevelMarks({}, 0, Steps::EACH_GROUP))
{
  std::vector<double> const values = comparedValues(scan.parameters[parameter].values, eligible);
  OrderedValues const ordered = orderedValues(values.data(), values.size());
  varies = ordered.groupEnds.size() > 1;
  if (isText)
    takeTexts(values, scan.parameters[parameter].texts.size());
  else if (ordered.groupEnds.size() * RUNS_PER_LEVEL > ordered.order.size())
    takeNumbers(ordered, values);
  else
    takeLevels(ordered, values);
}

void LiveParameter::takeTexts(std::vector<double> const& values, std::size_t texts)
{
  std::vector<std::uint32_t> levels;
  levels.reserve(values.size());
  for (double const value : values)
    levels.push_back(std::isnan(value) ? NO_LEVEL : static_cast<std::uint32_t>(value));
  marks = LevelMarks(std::move(levels), texts, Steps::EACH_GROUP);
}

void LiveParameter::takeNumbers(OrderedValues const& ordered, std::vector<double> const& values)
{
  valuesAt.reserve(ordered.order.size());
  for (std::uint32_t const run : ordered.order) valuesAt.push_back(values[run]);
  marks = OrderedMarks(ordered, values.size());
}

void LiveParameter::takeLevels(OrderedValues const& ordered, std::vector<double> const& values)
{
  std::vector<std::uint32_t> levels(values.size(), NO_LEVEL);
  std::size_t place = 0;
  for (std::uint32_t group = 0; group < ordered.groupEnds.size(); ++group) {
    valuesAt.push_back(values[ordered.order[place]]);
    for (; place < ordered.groupEnds[group]; ++place) levels[ordered.order[place]] = group;
  }
  marks = LevelMarks(std::move(levels), ordered.groupEnds.size(), Steps::CUMULATIVE);
}

void LiveParameter::flip(std::vector<std::uint32_t> const& changed, std::uint8_t const* passes)
{
  if (auto* const ordered = std::get_if<OrderedMarks>(&marks))
    ordered->flip(changed);
  else
    std::get<LevelMarks>(marks).flip(changed, passes);
}

LiveDistance LiveParameter::distance()
{
  auto* const ordered = std::get_if<OrderedMarks>(&marks);
  LargestDifference const found =
      ordered != nullptr ? ordered->largest() : std::get<LevelMarks>(marks).largest();
  LiveDistance result;
  result.parameter = position;
  result.varies = varies;
  result.passing = found.passing;
  result.others = found.others;
  result.d = static_cast<double>(found.difference) /
             (static_cast<double>(found.passing) * static_cast<double>(found.others));
  if (found.difference == 0) return result;
  if (isText)
    result.text = static_cast<std::int32_t>(found.place);
  else
    result.value = valuesAt[found.place];
  return result;
}

} // namespace runsieve
