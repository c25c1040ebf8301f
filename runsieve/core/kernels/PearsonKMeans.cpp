#include <runsieve/core/kernels/PearsonKMeans.h>

#include <runsieve/core/kernels/Correlation.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>

namespace runsieve {

namespace {

/// Curves by their deviations from their means.
struct CentredCurves
{
  CentredCurves(double const* curves, std::size_t count, std::size_t points)
      : deviations(count * points), roots(count)
  {
    for (std::size_t i = 0; i < count; ++i)
      roots[i] = centre(curves + i * points, points, deviations.data() + i * points);
  }

  std::vector<double> deviations;
  std::vector<double> roots;
};

class Search
{
public:
  Search(double const* itsCurves, std::size_t itsCount, std::size_t itsPoints, std::size_t itsClusters,
         SearchLimits itsLimits)
      : curves(itsCurves), count(itsCount), points(itsPoints), clusters(itsClusters), limits(itsLimits),
        centred(curves, count, points), products(clusters)
  {}

  /// The search from the first curves as centres.
  ShapeClusters fromFirst()
  {
    centres.assign(curves, curves + clusters * points);
    return run();
  }

  /// The search from curves that lie far from each other.
  ShapeClusters fromSpread(std::mt19937& random)
  {
    std::vector<double> nearestDistance(count, 1.0);
    centres.clear();
    for (std::size_t c = 0; c < clusters; ++c) {
      const std::size_t chosen = choose(nearestDistance, random);
      centres.insert(centres.end(), curves + chosen * points, curves + (chosen + 1) * points);
      for (std::size_t i = 0; i < count; ++i) {
        const double distance = distanceOf(i, chosen);
        nearestDistance[i] = c == 0 ? distance : std::min(nearestDistance[i], distance);
      }
    }
    return run();
  }

private:
  ShapeClusters run()
  {
    labels.assign(count, -1);
    for (int step = 0; step < limits.mostSteps && !limits.areOver(); ++step) {
      const double changed = static_cast<double>(assign()) / static_cast<double>(count);
      moveCentres();
      if (changed < limits.tolerance) break;
    }
    assign();
    return {centres, sizes, labels, spread};
  }

  /// A curve with a probability in proportion to its weight.
  static std::size_t choose(std::vector<double> const& weights, std::mt19937& random)
  {
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    // Not by a distribution of the standard library, whose numbers differ from one to the next.
    double left = sum * (static_cast<double>(random()) / 4294967296.0);
    for (std::size_t i = 0; i < weights.size(); ++i) {
      left -= weights[i];
      if (left < 0.0) return i;
    }
    return weights.size() - 1;
  }

  double distanceOf(std::size_t i, std::size_t j) const
  {
    double const* x = centred.deviations.data() + i * points;
    double const* y = centred.deviations.data() + j * points;
    return 1.0 - correlation(std::inner_product(x, x + points, y, 0.0), centred.roots[i], centred.roots[j]);
  }

  /// Gives each curve to the nearest centre. Returns how many curves have changed.
  std::size_t assign()
  {
    const CentredCurves centredCentres(centres.data(), clusters, points);
    turn(centredCentres.deviations);
    std::size_t changes = 0;
    spread = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
      multiply(centred.deviations.data() + i * points);
      const auto [label, distance] = nearest(centred.roots[i], centredCentres.roots);
      spread += distance;
      changes += label != labels[i] ? 1 : 0;
      labels[i] = label;
    }
    return changes;
  }

  /// Puts the values of all centres at one point side by side, so that they are multiplied at once.
  void turn(std::vector<double> const& deviations)
  {
    turned.resize(deviations.size());
    for (std::size_t c = 0; c < clusters; ++c)
      for (std::size_t p = 0; p < points; ++p) turned[p * clusters + c] = deviations[c * points + p];
  }

  void multiply(double const* curve)
  {
    std::fill(products.begin(), products.end(), 0.0);
    double* sums = products.data();
    double const* side = turned.data();
    for (std::size_t p = 0; p < points; ++p, side += clusters)
      for (std::size_t c = 0; c < clusters; ++c) sums[c] += side[c] * curve[p];
  }

  /// The nearest centre to the curve that was multiplied, and its distance.
  std::pair<int, double> nearest(double root, std::vector<double> const& centreRoots) const
  {
    std::size_t best = 0;
    double least = 1.0 - correlation(products[0], centreRoots[0], root);
    for (std::size_t c = 1; c < clusters; ++c) {
      const double distance = 1.0 - correlation(products[c], centreRoots[c], root);
      if (distance >= least) continue;
      least = distance;
      best = c;
    }
    return {static_cast<int>(best), least};
  }

  /// Makes each centre the running mean of its curves.
  void moveCentres()
  {
    sizes.assign(clusters, 0);
    std::fill(centres.begin(), centres.end(), 0.0);
    for (std::size_t i = 0; i < count; ++i) {
      const auto label = static_cast<std::size_t>(labels[i]);
      const auto size = static_cast<double>(++sizes[label]);
      double* mean = centres.data() + label * points;
      double const* curve = curves + i * points;
      for (std::size_t p = 0; p < points; ++p) mean[p] += (curve[p] - mean[p]) / size;
    }
  }

  double const* curves;
  std::size_t count;
  std::size_t points;
  std::size_t clusters;
  SearchLimits limits;
  CentredCurves centred;
  std::vector<double> products; ///< of one curve with each centre
  std::vector<double> turned;
  std::vector<double> centres;
  std::vector<long long> sizes;
  std::vector<int> labels;
  double spread = 0.0;
};

/// Places of the curves without a NaN or an infinity.
std::vector<std::size_t> finiteCurves(double const* curves, std::size_t count, std::size_t points)
{
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < count; ++i)
    if (std::all_of(curves + i * points, curves + (i + 1) * points, [](double v) { return std::isfinite(v); }))
      places.push_back(i);
  return places;
}

} // namespace

ShapeClusters clusterByShape(double const* curves, std::size_t count, std::size_t points, int clusters,
                             SearchLimits limits, int starts)
{
  if (count == 0 || points == 0 || clusters < 1) return {};
  Search search(curves, count, points, std::min(count, static_cast<std::size_t>(clusters)), limits);
  ShapeClusters best = search.fromFirst();
  std::mt19937 random;
  for (int start = 1; start < starts && !limits.areOver(); ++start) {
    ShapeClusters other = search.fromSpread(random);
    if (other.spread < best.spread) best = std::move(other);
  }
  return best;
}

ShapeClusters clusterFiniteByShape(double const* curves, std::size_t count, std::size_t points, int clusters,
                                   SearchLimits limits, int starts)
{
  if (points == 0 || clusters < 1) return {};
  const std::vector<std::size_t> finite = finiteCurves(curves, count, points);
  if (finite.size() == count) return clusterByShape(curves, count, points, clusters, limits, starts);
  std::vector<double> some;
  some.reserve(finite.size() * points);
  for (const std::size_t i : finite)
    some.insert(some.end(), curves + i * points, curves + (i + 1) * points);
  ShapeClusters found = clusterByShape(some.data(), finite.size(), points, clusters, limits, starts);
  const std::size_t all = std::min(count, static_cast<std::size_t>(clusters));
  found.centres.resize(all * points, 0.0);
  found.sizes.resize(all, 0);
  std::vector<int> labels(count, 0);
  for (std::size_t i = 0; i < finite.size(); ++i) labels[finite[i]] = found.labels[i];
  found.labels = std::move(labels);
  const std::size_t others = count - finite.size();
  found.sizes.front() += static_cast<long long>(others);
  found.spread += static_cast<double>(others);
  return found;
}

} // namespace runsieve
