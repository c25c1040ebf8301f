#include <runsieve/core/inference/RankCorrelation.h>

#include <runsieve/core/inference/OrderedRuns.h>

#include <Eigen/Core>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace runsieve {

namespace {

constexpr double UNDEFINED = std::numeric_limits<double>::quiet_NaN();

/// Writes the doubled, centred mid-rank of each member that has a value; leaves other runs as they are.
void writeRanks(OrderedValues const& ordered, unsigned char const* members, double* ranks)
{
  double size = 0.0;
  for (const std::uint32_t run : ordered.order) size += members[run];
  double before = 0.0;
  std::size_t begin = 0;
  for (const std::uint32_t end : ordered.groupEnds) {
    double upTo = before;
    for (std::size_t i = begin; i < end; ++i) upTo += members[ordered.order[i]];
    for (std::size_t i = begin; i < end; ++i)
      if (members[ordered.order[i]]) ranks[ordered.order[i]] = before + upTo - size;
    before = upTo;
    begin = end;
  }
}

/// The members that have a value.
std::vector<unsigned char> presentMembers(OrderedValues const& ordered,
                                          std::vector<unsigned char> const& members)
{
  std::vector<unsigned char> present(members.size());
  for (const std::uint32_t run : ordered.order) present[run] = members[run];
  return present;
}

double coefficient(double products, double squaresX, double squaresY)
{
  const double scale = std::sqrt(squaresX * squaresY);
  return scale > 0.0 ? std::clamp(products / scale, -1.0, 1.0) : UNDEFINED;
}

using ConstColumns = Eigen::Map<Eigen::MatrixXd const>;

ConstColumns columnsOf(RankTable const& table, std::vector<double> const& values)
{
  return {values.data(), static_cast<Eigen::Index>(table.rows), static_cast<Eigen::Index>(table.columns)};
}

template <class Entry> void forEachPair(std::size_t parameters, Entry const& entry)
{
  for (std::size_t i = 1; i < parameters; ++i)
    for (std::size_t j = 0; j < i; ++j)
      entry(static_cast<Eigen::Index>(i), static_cast<Eigen::Index>(j), pairPlace(i, j));
}

void correlateComplete(RankTable const& table, PairCorrelations& result)
{
  const ConstColumns ranks = columnsOf(table, table.ranks);
  Eigen::MatrixXd products = Eigen::MatrixXd::Zero(ranks.cols(), ranks.cols());
  // Without runs there is no memory to look at.
  if (!table.ranks.empty()) products.selfadjointView<Eigen::Lower>().rankUpdate(ranks.transpose());
  forEachPair(table.columns, [&](Eigen::Index i, Eigen::Index j, std::size_t place) {
    result.r[place] = coefficient(products(i, j), products(i, i), products(j, j));
    result.n[place] = static_cast<double>(table.rows);
  });
}

/// Each pair over the runs that have both values: column i of the sums belongs to the runs present in i.
void correlateIncomplete(RankTable const& table, PairCorrelations& result)
{
  const ConstColumns ranks = columnsOf(table, table.ranks);
  const ConstColumns present = columnsOf(table, table.present);
  const Eigen::MatrixXd products = ranks.transpose() * ranks;
  const Eigen::MatrixXd sums = ranks.transpose() * present;
  const Eigen::MatrixXd squares = ranks.cwiseAbs2().transpose() * present;
  const Eigen::MatrixXd sizes = present.transpose() * present;
  forEachPair(table.columns, [&](Eigen::Index i, Eigen::Index j, std::size_t place) {
    const double n = sizes(i, j);
    result.r[place] =
        coefficient(n * products(i, j) - sums(i, j) * sums(j, i), n * squares(i, j) - sums(i, j) * sums(i, j),
                    n * squares(j, i) - sums(j, i) * sums(j, i));
    result.n[place] = n;
  });
}

} // namespace

double rankCorrelation(OrderedValues const& x, OrderedValues const& y,
                       std::vector<unsigned char> const& members)
{
  const std::vector<unsigned char> both = presentMembers(x, presentMembers(y, members));
  std::vector<double> ranksX(members.size());
  std::vector<double> ranksY(members.size());
  writeRanks(x, both.data(), ranksX.data());
  writeRanks(y, both.data(), ranksY.data());
  auto product = [](std::vector<double> const& a, std::vector<double> const& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
  };
  return coefficient(product(ranksX, ranksY), product(ranksX, ranksX), product(ranksY, ranksY));
}

double rankCorrelation(double const* x, double const* y, std::size_t runs)
{
  return rankCorrelation(orderedValues(x, runs), orderedValues(y, runs), std::vector<unsigned char>(runs, 1));
}

RankTable rankTable(std::vector<OrderedValues> const& orders, std::vector<unsigned char> const& members)
{
  const std::vector<std::uint32_t> runs = runsMarked(members, true);
  RankTable table;
  table.rows = runs.size();
  table.columns = orders.size();
  table.ranks.resize(table.rows * table.columns);
  const bool complete = std::all_of(orders.begin(), orders.end(), [&](OrderedValues const& ordered) {
    return ordered.order.size() == members.size();
  });
  if (!complete) table.present.resize(table.ranks.size());
  std::vector<double> ranks(members.size());
  for (std::size_t p = 0; p < orders.size(); ++p) {
    std::fill(ranks.begin(), ranks.end(), 0.0);
    writeRanks(orders[p], members.data(), ranks.data());
    for (std::size_t row = 0; row < table.rows; ++row) table.column(p)[row] = ranks[runs[row]];
    if (complete) continue;
    const std::vector<unsigned char> present = presentMembers(orders[p], members);
    for (std::size_t row = 0; row < table.rows; ++row) table.presence(p)[row] = present[runs[row]];
  }
  return table;
}

PairCorrelations columnCorrelations(RankTable const& table)
{
  PairCorrelations result;
  result.r.resize(pairCount(table.columns));
  result.n.resize(result.r.size());
  if (table.present.empty())
    correlateComplete(table, result);
  else
    correlateIncomplete(table, result);
  return result;
}

PairCorrelations rankCorrelations(std::vector<OrderedValues> const& orders,
                                  std::vector<unsigned char> const& members)
{
  PairCorrelations result = columnCorrelations(rankTable(orders, members));
  std::vector<double> sizes; // members with a value
  for (OrderedValues const& ordered : orders) {
    sizes.push_back(0.0);
    for (const std::uint32_t run : ordered.order) sizes.back() += members[run];
  }
  // Where both parameters lack the same runs, their ranks are already those of the pair.
  for (std::size_t i = 1; i < orders.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (const std::size_t place = pairPlace(i, j); result.n[place] < std::max(sizes[i], sizes[j]))
        result.r[place] = rankCorrelation(orders[i], orders[j], members);
  return result;
}

} // namespace runsieve
