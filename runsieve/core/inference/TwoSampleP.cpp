#include <runsieve/core/inference/TwoSampleP.h>

#include <runsieve/core/inference/KolmogorovLimit.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace runsieve {

namespace {

constexpr std::uint64_t MOST_CELLS = 10'000'000;

/// The probability 1, scaled. Probabilities down to 1e-300 then stay far above the least normal number: the
/// ones below FLUSHED, of which a sum over all runs is still less than 1e-500, are taken for 0, and slow
/// denormal numbers never appear. A power of 2, so that it rounds nothing.
constexpr double CERTAIN = 0x1p+900;
constexpr double FLUSHED = 0x1p-960;

struct Test
{
  std::vector<std::uint32_t> const& groupEnds;
  std::int64_t passing;
  std::int64_t others;
  std::int64_t distance; ///< at least 1

  [[nodiscard]] std::int64_t runs() const { return passing + others; }
};

/// The cells between both boundaries, run by run of the pooled sample. A cell is named by the passing runs
/// among those met. At the last run of a group it is cut to the cells inside; up to then paths go on outside,
/// and the band takes in every cell that a path from inside can reach.
class Band
{
public:
  explicit Band(Test const& test) : test(test), nextEnd(test.groupEnds.begin()) {}

  /// Meets the next run, of which there must be one.
  void advance()
  {
    ++met;
    first = std::max(first, met - test.others);
    last = std::min(last + 1, test.passing);
    if (met != *nextEnd) return;
    ++nextEnd;
    std::int64_t const width = last - first;
    // With j others met, i others - j passing is i runs - (i + j) passing.
    while (first <= last && met * test.passing - first * test.runs() >= test.distance) ++first;
    while (first <= last && last * test.runs() - met * test.passing >= test.distance) --last;
    everCut = everCut || last - first < width;
  }

  [[nodiscard]] bool atEnd() const { return met == test.runs(); }

  std::int64_t met = 0;
  std::int64_t first = 0;
  std::int64_t last = 0; ///< less than first if no path stays inside
  bool everCut = false;  ///< before that, no path has left

private:
  Test const& test;
  std::vector<std::uint32_t>::const_iterator nextEnd;
};

bool takesTooLong(Test const& test)
{
  std::uint64_t cells = 0;
  if (static_cast<std::uint64_t>(test.runs()) > MOST_CELLS) return true;
  for (Band band(test); !band.atEnd() && cells <= MOST_CELLS;) {
    band.advance();
    if (band.last < band.first) return false;
    if (band.everCut) cells += static_cast<std::uint64_t>(band.last - band.first + 1);
  }
  return cells > MOST_CELLS;
}

/// The probabilities to have left the band, scaled, for the cells of one number of runs met. They stand one
/// place up, so that the band has a cell to either side.
class Level
{
public:
  explicit Level(std::int64_t passing) : scaled(static_cast<std::size_t>(passing) + 3) {}

  /// \param numbers 0, 1, 2, ...
  void follow(Level const& before, Band const& band, double const* numbers)
  {
    auto const met = static_cast<double>(band.met);
    double const share = 1.0 / met;
    double const* const from = before.scaled.data();
    double* const to = scaled.data() + 1;
    for (std::int64_t i = band.first; i <= band.last; ++i) {
      double const u = (numbers[i] * from[i] + (met - numbers[i]) * from[i + 1]) * share;
      to[i] = u < FLUSHED ? 0.0 : u;
    }
  }

  /// Also where no cell is; such a one is never reached from, since its factor is 0.
  void surround(Band const& band)
  {
    scaled[static_cast<std::size_t>(band.first)] = CERTAIN;
    scaled[static_cast<std::size_t>(band.last + 2)] = CERTAIN;
  }

  [[nodiscard]] double at(std::int64_t i) const { return scaled[static_cast<std::size_t>(i + 1)] / CERTAIN; }
  void swap(Level& other) { scaled.swap(other.scaled); }

private:
  std::vector<double> scaled;
};

double exactTail(Test const& test)
{
  std::vector<double> numbers(static_cast<std::size_t>(test.passing) + 1);
  std::iota(numbers.begin(), numbers.end(), 0.0);
  Level now(test.passing);
  Level before(test.passing);
  for (Band band(test); !band.atEnd(); before.swap(now)) {
    bool const left = band.everCut;
    band.advance();
    if (band.last < band.first) return 1.0;
    if (left) now.follow(before, band, numbers.data());
    if (band.everCut) now.surround(band);
  }
  return before.at(test.passing);
}

TwoSampleP withMethod(double p, PMethod method)
{
  bool const below = p < TwoSampleP::LEAST;
  return {below ? TwoSampleP::LEAST : std::min(p, 1.0), below, method};
}

TwoSampleP withoutRuns()
{
  return {std::numeric_limits<double>::quiet_NaN(), false, PMethod::Exact};
}

} // namespace

TwoSampleP twoSampleP(std::vector<std::uint32_t> const& groupEnds, std::uint32_t passing,
                      std::uint32_t others, std::int64_t difference)
{
  std::uint64_t const runs = std::uint64_t{passing} + others;
  if (runs > 0 && (groupEnds.empty() || groupEnds.back() != runs))
    throw std::invalid_argument("The last group ends before or after the last run");
  std::int64_t const most = std::int64_t{passing} * others;
  if (difference < -most || difference > most)
    throw std::invalid_argument("A difference is at most the product of both numbers of runs");
  if (passing == 0 || others == 0) return withoutRuns();
  if (difference == 0) return withMethod(1.0, PMethod::Exact);
  Test const test{groupEnds, passing, others, std::abs(difference)};
  if (takesTooLong(test)) return asymptoticP(passing, others, difference);
  return withMethod(exactTail(test), PMethod::Exact);
}

TwoSampleP asymptoticP(std::uint32_t passing, std::uint32_t others, std::int64_t difference)
{
  if (passing == 0 || others == 0) return withoutRuns();
  auto const m = static_cast<double>(passing);
  auto const n = static_cast<double>(others);
  double const z = std::abs(static_cast<double>(difference)) / std::sqrt(m * n * (m + n));
  return withMethod(kolmogorovTail(z), PMethod::Asymptotic);
}

} // namespace runsieve
