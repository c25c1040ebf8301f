#include <runsieve/core/kernels/UnivariateDensityDerivative.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace {

// The recurrence below is the cost of every selection and vectorises well; clones give it the widest
// registers of the machine. It holds no product followed by a sum, so all clones give the same bits.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define RUNSIEVE_VECTOR_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define RUNSIEVE_VECTOR_CLONES
#endif

constexpr double sqrtTwoPi = 2.506628274631000502;
constexpr int lanes = 8;  ///< partial sums per target, one vector
constexpr int block = 32; ///< sources that step through the targets together

/// How many bandwidths a source reaches. What is cut off lies fourteen decimals below the accuracy asked for,
/// relative to the peak of the kernel; derivatives grow by a polynomial, which the margin per order covers.
double reachOf(double accuracy, int order)
{
  const double smallest = std::clamp(accuracy, 1e-4, 1.0) * 1e-14;
  return std::sqrt(-2.0 * std::log(smallest)) + 0.5 * order;
}

/// Adds the terms e of a block of sources to the sums of consecutive targets; from one target to the next
/// each term grows by its quotient r, and all quotients by q.
RUNSIEVE_VECTOR_CLONES
void walkTargets(double* sums, long count, long direction, double const* terms, double const* quotients,
                 double q)
{
  // Vectors of eight that the compiler splits to what the machine has; left to itself it makes scalars of the
  // loops.
  using Vector = double __attribute__((vector_size(lanes * sizeof(double))));
  constexpr int vectors = block / lanes;
  Vector e[vectors];
  Vector r[vectors];
  std::memcpy(e, terms, sizeof e);
  std::memcpy(r, quotients, sizeof r);
  for (long j = 0; j < count; ++j) {
    double* target = sums + j * direction * lanes;
    Vector sum;
    std::memcpy(&sum, target, sizeof sum);
    for (int v = 0; v < vectors; ++v) {
      sum += e[v];
      e[v] *= r[v];
      r[v] *= q;
    }
    std::memcpy(target, &sum, sizeof sum);
  }
}

/// Probabilists' Hermite polynomial He_r(z).
double hermite(int order, double z)
{
  double previous = 1.0;
  double current = z;
  if (order == 0) return previous;
  for (int k = 1; k < order; ++k) {
    const double next = z * current - k * previous;
    previous = current;
    current = next;
  }
  return current;
}

/// The sum over ascending sources by definition, for any targets and any order.
void sumDirectly(std::vector<double> const& x, double const* targets, int targetCount, double h, int order,
                 double reach, double* sums)
{
  for (int j = 0; j < targetCount; ++j) {
    double sum = 0.0;
    auto from = std::lower_bound(x.begin(), x.end(), targets[j] - reach);
    for (; from != x.end() && *from <= targets[j] + reach; ++from) {
      const double z = (targets[j] - *from) / h;
      sum += hermite(order, z) * std::exp(-0.5 * z * z);
    }
    sums[j] = sum;
  }
}

/// Equally spaced ascending targets.
struct Grid
{
  double first = 0.0;
  double step = 0.0;
  int count = 0;
  double at(int j) const { return first + j * step; }
};

bool makeGrid(double const* targets, int count, Grid& grid)
{
  if (count < 2) return false;
  grid = {targets[0], (targets[count - 1] - targets[0]) / (count - 1), count};
  if (!(grid.step > 0.0)) return false;
  const double tolerance = 1e-9 * grid.step;
  for (int j = 0; j < count; ++j)
    if (!(std::fabs(targets[j] - grid.at(j)) <= tolerance)) return false;
  return true;
}

/// Sums of Gaussians on a grid by recurrence: exp(-(z+d)^2/2) follows from exp(-z^2/2) by two products. Each
/// block of sources starts at the target nearest to it and walks to both sides, so that nothing underflows on
/// the way.
class GridSum
{
public:
  GridSum(Grid const& targets, double h, double reach)
      : grid(targets), bandwidth(h), reach(reach), d(targets.step / h), q(std::exp(-d * d)),
        sums(static_cast<std::size_t>(targets.count) * lanes, 0.0)
  {}

  /// Whether the quotients of the recurrence stay in range.
  static bool isStable(Grid const& grid, double h) { return grid.step <= 20.0 * h; }

  void add(double const* x, int n)
  {
    if (x[n - 1] - x[0] > 16.0 * bandwidth && n > 1) {
      for (int i = 0; i < n; ++i) add(x + i, 1);
      return;
    }
    const int from = std::max(0, static_cast<int>(std::ceil(position(x[0] - reach))));
    const int to = std::min(grid.count - 1, static_cast<int>(std::floor(position(x[n - 1] + reach))));
    if (from > to) return;
    const double middle = position(0.5 * (x[0] + x[n - 1]));
    const int start = std::min(std::max(static_cast<int>(std::lround(middle)), from), to);
    std::array<double, block> e{};
    std::array<double, block> r{};
    for (int i = 0; i < n; ++i) {
      const double z = (grid.at(start) - x[i]) / bandwidth;
      e[i] = std::exp(-0.5 * z * z);
      r[i] = std::exp(-d * (z + 0.5 * d));
    }
    walkTargets(at(start), to - start + 1, +1, e.data(), r.data(), q);
    // Downwards the first quotient follows from the same exponentials.
    for (int i = 0; i < n; ++i) {
      r[i] = q / r[i];
      e[i] *= r[i];
      r[i] *= q;
    }
    if (start > from) walkTargets(at(start - 1), start - from, -1, e.data(), r.data(), q);
  }

  void write(double* out) const
  {
    for (int j = 0; j < grid.count; ++j) {
      double sum = 0.0;
      for (int i = 0; i < lanes; ++i) sum += sums[static_cast<std::size_t>(j) * lanes + i];
      out[j] = sum;
    }
  }

private:
  double position(double value) const
  {
    // Clamped, so that far sources convert to int safely.
    return std::clamp((value - grid.first) / grid.step, -2.0, grid.count + 1.0);
  }

  double* at(int target) { return sums.data() + static_cast<std::size_t>(target) * lanes; }

  Grid grid;
  double bandwidth;
  double reach; ///< distance at which a source no longer matters
  double d;     ///< grid step in bandwidths
  double q;
  std::vector<double> sums; ///< lanes partial sums per target
};

void sumOnGrid(std::vector<double> const& x, Grid const& grid, double h, double reach, double* sums)
{
  GridSum sum(grid, h, reach);
  for (std::size_t i = 0; i < x.size(); i += block)
    sum.add(x.data() + i, static_cast<int>(std::min<std::size_t>(block, x.size() - i)));
  sum.write(sums);
}

} // namespace

UnivariateDensityDerivative::UnivariateDensityDerivative(int sourceCount_, int targetCount_, double* sources_,
                                                         double* targets_, double bandwidth_, int order_,
                                                         double accuracy_, double* results_)
    : sourceCount(sourceCount_), targetCount(targetCount_), sources(sources_), targets(targets_),
      bandwidth(bandwidth_), order(std::max(order_, 0)), accuracy(accuracy_), results(results_)
{}

void UnivariateDensityDerivative::Evaluate()
{
  if (targetCount < 1) return;
  std::fill(results, results + targetCount, 0.0);
  if (sourceCount < 1 || !(bandwidth > 0.0) || !std::isfinite(bandwidth)) return;
  std::vector<double> x(sources, sources + sourceCount);
  if (std::any_of(x.begin(), x.end(), [](double v) { return std::isnan(v); })) {
    std::fill(results, results + targetCount, std::numeric_limits<double>::quiet_NaN());
    return;
  }
  if (!std::is_sorted(x.begin(), x.end())) std::sort(x.begin(), x.end());
  // Infinitely far sources count, but reach no target.
  x.erase(std::remove_if(x.begin(), x.end(), [](double v) { return std::isinf(v); }), x.end());
  if (x.empty()) return;

  const double reach = reachOf(accuracy, order) * bandwidth;
  Grid grid;
  if (order == 0 && makeGrid(targets, targetCount, grid) && GridSum::isStable(grid, bandwidth))
    sumOnGrid(x, grid, bandwidth, reach, results);
  else
    sumDirectly(x, targets, targetCount, bandwidth, order, reach, results);

  const double sign = order % 2 == 0 ? 1.0 : -1.0;
  const double scale = sign / (sqrtTwoPi * sourceCount * std::pow(bandwidth, order + 1));
  for (int j = 0; j < targetCount; ++j) results[j] *= scale;
}
