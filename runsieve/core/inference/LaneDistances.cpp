#include <runsieve/core/inference/LaneDistances.h>

#include <cstdint>
#include <cstring>

// Clones give the loops the widest registers of the machine. All numbers are whole, so all clones give the
// same.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define RUNSIEVE_VECTOR_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define RUNSIEVE_VECTOR_CLONES
#endif

namespace runsieve {

namespace {

using Vector = double __attribute__((vector_size(LANES * sizeof(double))));

/// Writes the largest |others' size x passing runs so far - passing size x others so far| at an end of a
/// group. \param factors size of the others and size of the passing runs, LANES each
RUNSIEVE_VECTOR_CLONES
void walk(std::uint32_t const* order, std::uint32_t const* ends, std::size_t groups, double const* counts,
          double const* factors, double* largest)
{
  const Vector zero = {};
  Vector plus;
  Vector minus;
  std::memcpy(&plus, factors, sizeof plus);
  std::memcpy(&minus, factors + LANES, sizeof minus);
  Vector distance = zero;
  Vector most = zero;
  std::size_t i = 0;
  for (std::size_t g = 0; g < groups; ++g) {
    for (; i < ends[g]; ++i) {
      Vector count;
      std::memcpy(&count, counts + order[i] * LANES, sizeof count);
      distance += count * (count > zero ? plus : minus);
    }
    const Vector size = distance > zero ? distance : -distance;
    most = size > most ? size : most;
  }
  std::memcpy(largest, &most, sizeof most);
}

void addRun(double const* counts, LaneSizes& sizes)
{
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    const double count = counts[lane];
    sizes.passing[lane] += count > 0.0 ? count : 0.0;
    sizes.others[lane] += count < 0.0 ? -count : 0.0;
  }
}

} // namespace

LaneSizes laneSizes(LaneCounts const& counts)
{
  LaneSizes sizes;
  for (std::size_t i = 0; i < counts.size(); i += LANES) addRun(counts.data() + i, sizes);
  return sizes;
}

void laneDistances(OrderedValues const& ordered, LaneCounts const& counts, LaneSizes const& sizes,
                   double* distances)
{
  LaneSizes own = sizes;
  if (ordered.order.size() * LANES < counts.size()) {
    own = LaneSizes();
    for (const std::uint32_t run : ordered.order) addRun(counts.data() + run * LANES, own);
  }
  double factors[2 * LANES];
  std::memcpy(factors, own.others, sizeof own.others);
  std::memcpy(factors + LANES, own.passing, sizeof own.passing);
  walk(ordered.order.data(), ordered.groupEnds.data(), ordered.groupEnds.size(), counts.data(), factors,
       distances);
  for (std::size_t lane = 0; lane < LANES; ++lane) {
    const double scale = own.passing[lane] * own.others[lane];
    distances[lane] = scale > 0.0 ? distances[lane] / scale : 0.0;
  }
}

} // namespace runsieve
