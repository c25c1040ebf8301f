#include <runsieve/stats/PearsonKMeans.h>

#include <runsieve/records/Correlation.h>

#include <algorithm>

namespace runsieve {

namespace {

constexpr int mostSteps = 50;
constexpr double tolerance = 0.01; ///< share of curves that may still change

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
  Search(double const* itsCurves, std::size_t itsCount, std::size_t itsPoints, std::size_t itsClusters)
      : curves(itsCurves), count(itsCount), points(itsPoints), clusters(itsClusters),
        centred(curves, count, points), products(clusters), labels(count, -1)
  {
    centres.assign(curves, curves + clusters * points);
  }

  ShapeClusters run()
  {
    for (int step = 0; step < mostSteps; ++step) {
      const double changed = static_cast<double>(assign()) / static_cast<double>(count);
      moveCentres();
      if (changed < tolerance) break;
    }
    assign();
    return {centres, sizes, labels};
  }

private:
  /// Gives each curve to the nearest centre. Returns how many curves have changed.
  std::size_t assign()
  {
    const CentredCurves centredCentres(centres.data(), clusters, points);
    turn(centredCentres.deviations);
    std::size_t changes = 0;
    for (std::size_t i = 0; i < count; ++i) {
      multiply(centred.deviations.data() + i * points);
      const int label = nearest(centred.roots[i], centredCentres.roots);
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

  int nearest(double root, std::vector<double> const& centreRoots) const
  {
    std::size_t best = 0;
    double least = 1.0 - correlation(products[0], centreRoots[0], root);
    for (std::size_t c = 1; c < clusters; ++c) {
      const double distance = 1.0 - correlation(products[c], centreRoots[c], root);
      if (distance >= least) continue;
      least = distance;
      best = c;
    }
    return static_cast<int>(best);
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
  CentredCurves centred;
  std::vector<double> products; ///< of one curve with each centre
  std::vector<double> turned;
  std::vector<double> centres;
  std::vector<long long> sizes;
  std::vector<int> labels;
};

} // namespace

ShapeClusters clusterByShape(double const* curves, std::size_t count, std::size_t points, int clusters)
{
  if (count == 0 || points == 0 || clusters < 1) return {};
  return Search(curves, count, points, std::min(count, static_cast<std::size_t>(clusters))).run();
}

} // namespace runsieve
