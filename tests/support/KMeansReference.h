#pragma once

#include "ClusterScene.h"

#include <cmath>
#include <complex>
#include <optional>
#include <random>
#include <vector>

namespace runsieve::test {

inline double meanOf(Curve const& curve)
{
  double sum = 0;
  for (double value : curve) sum += value;
  return sum / static_cast<double>(curve.size());
}

/// 1 - r, straight from the definition of r.
inline double pearsonDistance(Curve const& a, Curve const& b)
{
  double const meanA = meanOf(a);
  double const meanB = meanOf(b);
  double ab = 0, aa = 0, bb = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    ab += (a[i] - meanA) * (b[i] - meanB);
    aa += (a[i] - meanA) * (a[i] - meanA);
    bb += (b[i] - meanB) * (b[i] - meanB);
  }
  return 1 - ab / std::sqrt(aa * bb);
}

inline std::size_t nearest(Curves const& centres, Curve const& curve)
{
  std::size_t best = 0;
  for (std::size_t c = 1; c < centres.size(); ++c)
    if (pearsonDistance(centres[c], curve) < pearsonDistance(centres[best], curve)) best = c;
  return best;
}

/// Mean of the curves that bear each label; none if a label is not in use.
inline std::optional<Curves> meansBy(std::vector<int> const& labels, Curves const& curves, int clusters)
{
  Curves means(clusters, Curve(curves.front().size(), 0.0));
  std::vector<int> sizes(clusters, 0);
  for (int label : labels) ++sizes.at(label);
  for (std::size_t r = 0; r < curves.size(); ++r)
    for (std::size_t t = 0; t < curves[r].size(); ++t) means[labels[r]][t] += curves[r][t] / sizes[labels[r]];
  for (int size : sizes)
    if (size == 0) return std::nullopt;
  return means;
}

/// K-means from the first curves as centres. None if a cluster runs empty or the labels don't come to rest.
inline std::optional<std::vector<int>> kMeansLabels(Curves const& curves, int clusters)
{
  Curves centres(curves.begin(), curves.begin() + clusters);
  std::vector<int> labels;
  for (int iteration = 0; iteration < 40; ++iteration) {
    std::vector<int> next;
    for (Curve const& curve : curves) next.push_back(static_cast<int>(nearest(centres, curve)));
    if (next == labels) return labels;
    labels = next;
    auto means = meansBy(labels, curves, clusters);
    if (!means) return std::nullopt;
    centres = *means;
  }
  return std::nullopt;
}

/// The discrete Fourier transform from its definition, with as many terms as the curve has values.
inline std::vector<std::complex<double>> fourier(Curve const& curve)
{
  std::size_t const n = curve.size();
  std::vector<std::complex<double>> spectrum(n);
  for (std::size_t k = 0; k < n; ++k)
    for (std::size_t t = 0; t < n; ++t)
      spectrum[k] +=
          curve[t] * std::polar(1.0, -2.0 * M_PI * static_cast<double>(k * t % n) / static_cast<double>(n));
  return spectrum;
}

/// Random walks, all of them above 0.
inline Curves randomCurves(unsigned seed, int runs, int times)
{
  std::mt19937 random(seed);
  std::normal_distribution<double> step;
  Curves curves;
  for (int r = 0; r < runs; ++r) {
    Curve curve;
    double value = 20;
    for (int t = 0; t < times; ++t) curve.push_back(value += step(random));
    curves.push_back(curve);
  }
  return curves;
}

} // namespace runsieve::test
