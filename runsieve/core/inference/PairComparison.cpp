#include <runsieve/core/inference/PairComparison.h>

#include <runsieve/core/inference/NoiseFloor.h>
#include <runsieve/core/inference/OrderedRuns.h>
#include <runsieve/core/inference/RandomStream.h>
#include <runsieve/core/inference/Shuffle.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace runsieve {

namespace {

constexpr double DESIGN_LEVEL = 0.01; ///< of all pairs together

std::vector<OrderedValues> const& checked(std::vector<OrderedValues> const& orders, std::size_t runs)
{
  checkRuns(orders, runs);
  return orders;
}

/// |r| sqrt(n - 1), or NaN.
double independenceStatistic(double r, double n)
{
  return std::abs(r) * std::sqrt(n - 1.0);
}

/// Fisher's z; without ties no correlation of n runs that is not perfect is nearer to 1 than 12 / n^3. One
/// with ties that is nearer counts as this near, which is cautious.
double fisherZ(double r, double n)
{
  const double limit = 1.0 - 6.0 / (n * n * n);
  return std::atanh(std::clamp(r, -limit, limit));
}

double dependenceStatistic(double r, double expected, double n)
{
  if (std::isnan(r) || std::isnan(expected)) return std::numeric_limits<double>::quiet_NaN();
  if (n <= 3.0) return 0.0;
  return std::abs(fisherZ(r, n) - fisherZ(expected, n)) /
         std::sqrt((1.0 + expected * expected / 2.0) / (n - 3.0));
}

double largestStatistic(PairCorrelations const& correlations)
{
  double largest = 0.0;
  for (std::size_t place = 0; place < correlations.r.size(); ++place)
    largest = std::fmax(largest, independenceStatistic(correlations.r[place], correlations.n[place]));
  return largest;
}

/// Shuffles the ranks of the runs that have one.
void shufflePresent(double* ranks, double const* present, std::size_t rows, RandomStream& random)
{
  std::vector<double> held;
  for (std::size_t row = 0; row < rows; ++row)
    if (present[row] > 0.0) held.push_back(ranks[row]);
  shuffleToFront(held.data(), held.size(), held.size(), random);
  std::size_t next = 0;
  for (std::size_t row = 0; row < rows; ++row)
    if (present[row] > 0.0) ranks[row] = held[next++];
}

std::vector<unsigned char> complementOf(std::vector<unsigned char> mask)
{
  for (unsigned char& mark : mask) mark = mark ? 0 : 1;
  return mask;
}

} // namespace

PairComparison::PairComparison(std::vector<OrderedValues> const& parameterOrders,
                               std::vector<unsigned char> passing, PairSettings const& pairSettings)
    : orders(checked(parameterOrders, passing.size())), passes(std::move(passing)), settings(pairSettings),
      inPassing(rankCorrelations(orders, passes)), inOthers(rankCorrelations(orders, complementOf(passes))),
      inAll(rankCorrelations(orders, std::vector<unsigned char>(passes.size(), 1))),
      passingRanks(rankTable(orders, passes)), design(inAll.r.size()), expected(inAll.r.size()),
      maxima(settings.permutations)
{
  findDesignPairs();
  const std::size_t ranks = passingRanks.ranks.size();
  work = PieceWork(designPairs.size() + maxima.size(), ranks * (1 + orders.size() / 16), settings.threads);
}

void PairComparison::findDesignPairs()
{
  for (std::size_t i = 1; i < orders.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) {
      const std::size_t place = pairPlace(i, j);
      const double tail = std::erfc(independenceStatistic(inAll.r[place], inAll.n[place]) / std::sqrt(2.0));
      design[place] = tail * static_cast<double>(design.size()) < DESIGN_LEVEL ? 1 : 0;
      if (design[place]) designPairs.push_back({j, i});
    }
  if (designPairs.empty()) return;
  for (OrderedValues const& ordered : orders) bins.push_back(parameterBins(ordered, passes));
}

void PairComparison::advance(std::size_t pieces)
{
  work.advance(pieces, [this](std::size_t piece) {
    if (piece < designPairs.size())
      findExpected(designPairs[piece]);
    else
      permute(piece - designPairs.size());
  });
}

void PairComparison::findExpected(Pair const& pair)
{
  expected[pairPlace(pair.second, pair.first)] = separateCorrelation(
      orders[pair.first], bins[pair.first], orders[pair.second], bins[pair.second], passes);
}

void PairComparison::permute(std::size_t permutation)
{
  RandomStream random(settings.seed, permutation);
  RankTable shuffled = passingRanks;
  for (std::size_t p = 0; p < shuffled.columns; ++p)
    if (shuffled.present.empty())
      shuffleToFront(shuffled.column(p), shuffled.rows, shuffled.rows, random);
    else
      shufflePresent(shuffled.column(p), shuffled.presence(p), shuffled.rows, random);
  maxima[permutation] = largestStatistic(columnCorrelations(shuffled));
}

double PairComparison::statisticOf(std::size_t place) const
{
  const double r = inPassing.r[place];
  const double n = inPassing.n[place];
  return design[place] ? dependenceStatistic(r, expected[place], n) : independenceStatistic(r, n);
}

std::vector<PairResult> PairComparison::pairs() const
{
  const double floor = noiseFloor();
  std::vector<double> sorted = maxima;
  std::sort(sorted.begin(), sorted.end());
  std::vector<PairResult> results;
  for (std::size_t first = 0; first < orders.size(); ++first)
    for (std::size_t second = first + 1; second < orders.size(); ++second) {
      const std::size_t place = pairPlace(second, first);
      PairResult result{first,
                        second,
                        inPassing.r[place],
                        inOthers.r[place],
                        inAll.r[place],
                        design[place] != 0,
                        expected[place],
                        statisticOf(place)};
      const auto atLeast = sorted.end() - std::lower_bound(sorted.begin(), sorted.end(), result.statistic);
      result.p = std::isnan(result.statistic)
                     ? result.statistic
                     : (1.0 + static_cast<double>(atLeast)) / (1.0 + static_cast<double>(sorted.size()));
      result.beyondFloor = result.statistic > floor;
      result.passingRuns = static_cast<std::size_t>(inPassing.n[place]);
      result.otherRuns = static_cast<std::size_t>(inOthers.n[place]);
      results.push_back(result);
    }
  return results;
}

double PairComparison::noiseFloor() const
{
  return noiseFloorOf(maxima, settings.level);
}

double PairComparison::correlationFloor() const
{
  return noiseFloor() / std::sqrt(static_cast<double>(passingRanks.rows) - 1.0);
}

} // namespace runsieve
