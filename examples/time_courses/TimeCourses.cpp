#include "time_courses/TimeCourses.h"

#include <boost/numeric/odeint.hpp>

#include <array>
#include <cmath>

namespace time_courses {

namespace {

constexpr std::size_t genes = 3;
constexpr int samples = 301;
constexpr double lastMinute = 600.0;
constexpr const char* proteins[genes] = {"LacI", "TetR", "cI"};

/// mRNA of each gene, then protein of each gene; molecules per cell.
using State = std::array<double, 2 * genes>;

struct Repressilator
{
  double halfRepression;

  void operator()(State const& now, State& change, double) const
  {
    constexpr double transcription = 30.0; // per minute, without repressor
    constexpr double leak = 0.03;
    constexpr double translation = 6.9; // per mRNA and minute
    const double mRnaDecay = std::log(2.0) / 2.0;
    const double proteinDecay = std::log(2.0) / 10.0;
    for (std::size_t g = 0; g < genes; ++g) {
      const double repressor = now[genes + (g + genes - 1) % genes] / halfRepression;
      change[g] = leak + transcription / (1.0 + repressor * repressor) - mRnaDecay * now[g];
      change[genes + g] = translation * now[g] - proteinDecay * now[genes + g];
    }
  }
};

} // namespace

TimeCourses::TimeCourses(double halfRepression)
{
  namespace odeint = boost::numeric::odeint;
  using Kestrane::TypedConcentrationName;
  State state = {0.0, 0.0, 0.0, 5.0, 0.0, 15.0}; // unlike amounts, or the ring would not turn
  auto record = [this](State const& now, double time) {
    times.push_back(time);
    for (std::size_t g = 0; g < genes; ++g) {
      series[TypedConcentrationName(Kestrane::Complex, std::string("mRNA of ") + proteins[g])].push_back(
          now[g]);
      series[TypedConcentrationName(Kestrane::Molecule, proteins[g])].push_back(now[genes + g]);
    }
    const double all = now[genes] + now[genes + 1] + now[genes + 2];
    series[TypedConcentrationName(Kestrane::Pattern, "all repressors")].push_back(all);
  };
  const auto stepper = odeint::make_dense_output(1e-8, 1e-8, odeint::runge_kutta_dopri5<State>());
  const double step = lastMinute / (samples - 1);
  odeint::integrate_n_steps(stepper, Repressilator{halfRepression}, state, 0.0, step, samples - 1, record);
}

LinePlotData TimeCourses::data()
{
  LinePlotData record;
  record.timeLabel = "Time [min]";
  record.valueLabel = "Molecules per cell";
  record.times = &times;
  for (auto& [name, values] : series) record.series[name] = &values;
  return record;
}

} // namespace time_courses
