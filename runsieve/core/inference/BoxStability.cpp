#include <runsieve/core/inference/BoxStability.h>

#include <runsieve/core/inference/BoxSurroundings.h>
#include <runsieve/core/inference/RandomStream.h>
#include <runsieve/core/parallel/Parallel.h>

#include <algorithm>
#include <cmath>

namespace runsieve {

namespace {

constexpr std::size_t samplesBetweenQuestions = 2; ///< of each thread

/// The box of one half, and how good it is on the other one.
struct HalfBox
{
  Box box;
  BoxMeasures elsewhere;
};

std::vector<std::uint32_t> eligibleRuns(BoxSample const& sample)
{
  std::vector<std::uint32_t> runs;
  runs.reserve(sample.all().runs);
  for (std::size_t run = 0; run < sample.marks().size(); ++run)
    if (sample.marks()[run] != 0) runs.push_back(static_cast<std::uint32_t>(run));
  return runs;
}

/// Marks those that are drawn with 1, the other eligible ones with 2.
std::vector<unsigned char> drawHalf(std::vector<std::uint32_t> eligible, std::size_t runs,
                                    RandomStream random)
{
  std::vector<unsigned char> halves(runs);
  for (std::uint32_t const run : eligible) halves[run] = 2;
  for (std::size_t i = 0; i < eligible.size() / 2; ++i) {
    std::size_t const drawn = i + random.below(static_cast<std::uint32_t>(eligible.size() - i));
    std::swap(eligible[i], eligible[drawn]);
    halves[eligible[i]] = 1;
  }
  return halves;
}

BoxSample halfOf(BoxSample const& sample, std::vector<unsigned char> const& halves, unsigned char half)
{
  std::vector<unsigned char> passing(halves.size());
  std::vector<unsigned char> eligible(halves.size());
  for (std::size_t run = 0; run < halves.size(); ++run) {
    passing[run] = sample.marks()[run] == BoxSample::PASSING ? 1 : 0;
    eligible[run] = halves[run] == half ? 1 : 0;
  }
  return BoxSample(passing.data(), passing.size(), eligible.data());
}

BoxSpread spreadOf(std::vector<double> values)
{
  BoxSpread spread;
  values.erase(std::remove_if(values.begin(), values.end(), [](double value) { return std::isnan(value); }),
               values.end());
  spread.count = values.size();
  if (values.empty()) return spread;
  std::sort(values.begin(), values.end());
  auto const quantile = [&](std::size_t percent) { return values[(values.size() * percent + 99) / 100 - 1]; };
  spread.low = quantile(5);
  spread.median = quantile(50);
  spread.high = quantile(95);
  return spread;
}

BoxRange const* rangeOf(Box const& box, std::size_t parameter)
{
  auto const range = std::find_if(box.ranges.begin(), box.ranges.end(),
                                  [&](BoxRange const& r) { return r.parameter == parameter; });
  return range == box.ranges.end() ? nullptr : &*range;
}

RangeStability stabilityOf(std::vector<HalfBox> const& boxes, std::size_t parameter, std::size_t categories)
{
  RangeStability result;
  result.leftOut.resize(categories);
  std::vector<double> low;
  std::vector<double> high;
  for (HalfBox const& half : boxes) {
    BoxRange const* range = rangeOf(half.box, parameter);
    if (!range) continue;
    ++result.restricted;
    if (range->cutsLow()) low.push_back(range->low);
    if (range->cutsHigh()) high.push_back(range->high);
    for (std::size_t category = 0; category < range->kept.size(); ++category)
      result.leftOut[category] += range->kept[category] == 0 ? 1 : 0;
  }
  result.low = spreadOf(std::move(low));
  result.high = spreadOf(std::move(high));
  return result;
}

template <class Measure> BoxSpread spreadOf(std::vector<HalfBox> const& boxes, Measure const& measure)
{
  std::vector<double> values;
  values.reserve(boxes.size());
  for (HalfBox const& half : boxes) values.push_back(measure(half.elsewhere));
  return spreadOf(std::move(values));
}

} // namespace

std::optional<BoxStability> boxStability(BoxTable const& table, BoxSample const& sample,
                                         PeelOptions const& options, BoxRule const& rule,
                                         HalfSamples const& halves, StopAsked const& stopAsked)
{
  checkSizes(table, sample);
  std::vector<std::uint32_t> const eligible = eligibleRuns(sample);
  std::vector<HalfBox> boxes(halves.count);
  auto const search = [&](std::size_t i) {
    auto const drawn = drawHalf(eligible, table.runs(), RandomStream(halves.seed, i));
    BoxSample const half = halfOf(sample, drawn, 1);
    Box box = *chosenBox(table, half, *findBoxPath(table, half, options), options, rule);
    BoxMeasures const elsewhere = measure(table, halfOf(sample, drawn, 2), box);
    boxes[i] = {std::move(box), elsewhere};
  };
  unsigned const threads = threadCount(halves.threads);
  for (std::size_t done = 0; done < halves.count;) {
    if (stopAsked && stopAsked()) return std::nullopt;
    std::size_t const more = std::min(halves.count - done, threads * samplesBetweenQuestions);
    inParallel(threads, more, [&](std::size_t i) { search(done + i); });
    done += more;
  }
  BoxStability result;
  result.samples = halves.count;
  for (std::size_t parameter = 0; parameter < table.columns().size(); ++parameter)
    result.parameters.push_back(stabilityOf(boxes, parameter, table.columns()[parameter].categories));
  result.coverage = spreadOf(boxes, [](BoxMeasures const& m) { return m.coverage(); });
  result.density = spreadOf(boxes, [](BoxMeasures const& m) { return m.density(); });
  result.mass = spreadOf(boxes, [](BoxMeasures const& m) { return m.mass(); });
  return result;
}

} // namespace runsieve
