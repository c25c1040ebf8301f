#include <runsieve/core/coverage/SlicedCoverage.h>

#include <runsieve/core/coverage/CoverageLanes.h>

#include <cmath>
#include <numeric>
#include <utility>

namespace runsieve {

namespace {

/// Steps of the golden section spread any number of places evenly over a circle (V. T. Sos, On the
/// distribution mod 1 of the sequence n alpha, 1958).
std::size_t goldenStep(std::size_t size)
{
  const double section = (std::sqrt(5.0) - 1.0) / 2.0;
  auto step = static_cast<std::size_t>(std::lround(static_cast<double>(size) * section));
  if (step < 1) return 1;
  while (std::gcd(step, size) != 1) ++step;
  return step;
}

} // namespace

SlicedCoverage::SlicedCoverage(RunCoverage::Frame const& frame, std::size_t runs)
    : coverage(frame), counted(runs), stepSize(goldenStep(runs))
{}

double SlicedCoverage::share(Coats const& wanted) const
{
  std::size_t all = 0;
  std::size_t done = 0;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    all += wanted[i];
    done += wanted[i] < counted[i] ? wanted[i] : counted[i];
  }
  return all > 0 ? static_cast<double>(done) / static_cast<double>(all) : 1.0;
}

SlicedCoverage::Progress SlicedCoverage::change(RunBlock const& runs, Coats next, BlockRunner const& runner)
{
  if (!CoverageLanes::change(coverage, runs, counted.data(), next.data(), runner)) return Progress::tooMany;
  counted = std::move(next);
  return Progress::done;
}

SlicedCoverage::Progress SlicedCoverage::advance(RunBlock const& runs, Coats const& wanted,
                                                 std::size_t mostRuns, BlockRunner const& runner)
{
  Coats next = counted;
  std::size_t drawn = 0;
  std::size_t looked = 0;
  for (; looked < next.size() && drawn < mostRuns; ++looked) {
    drawn += next[place] != wanted[place];
    next[place] = wanted[place];
    place = (place + stepSize) % next.size();
  }
  const bool isAll = looked == next.size();
  if (drawn > 0 && change(runs, std::move(next), runner) == Progress::tooMany) return Progress::tooMany;
  return isAll ? Progress::done : Progress::more;
}

SlicedCoverage::Progress SlicedCoverage::finish(RunBlock const& runs, Coats const& wanted,
                                                BlockRunner const& runner)
{
  return counted == wanted ? Progress::done : change(runs, wanted, runner);
}

} // namespace runsieve
