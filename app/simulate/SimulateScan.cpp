#include "app/simulate/SimulateScan.h"

#include <runsieve/core/parallel/Parallel.h>

#include <boost/numeric/odeint.hpp>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::app {

namespace {

using State = std::vector<double>;

constexpr double absoluteError = 1e-8; // of one step, in the units of the state
constexpr double relativeError = 1e-8;
constexpr int mostSteps = 1000000;

/// The scan of one model.
class ScanBuilder
{
public:
  ScanBuilder(Model const& scannedModel, SimulateOptions const& options) : model(scannedModel)
  {
    scan.time = {"Time", model.timeUnit, "", ""};
    for (std::size_t i = 0; i < options.times; ++i)
      scan.times.push_back(model.duration * static_cast<double>(i) / static_cast<double>(options.times - 1));
    for (std::size_t run = 0; run < options.runs; ++run)
      scan.runs.push_back({std::to_string(run), RunStatus::Complete, options.times});
    for (auto const& species : model.species)
      outputs.push_back(species.recorded
                            ? scan.addOutput({species.name, species.unit, species.meaning, "Molecule"})
                            : nullptr);
    for (auto const& parameter : model.parameters)
      if (parameter.isVaried())
        scan.parameters.push_back(
            {{parameter.name, parameter.unit, parameter.meaning, ""}, std::vector<double>(options.runs), {}});
  }

  [[nodiscard]] double timeAt(std::size_t i) const { return scan.times[i]; }

  void writeParameters(std::size_t run, std::vector<double> const& parameters)
  {
    std::size_t at = 0;
    for (std::size_t k = 0; k < parameters.size(); ++k)
      if (model.parameters[k].isVaried()) scan.parameters[at++].values[run] = parameters[k];
  }

  void writeState(std::size_t runIndex, std::size_t timeIndex, State const& state)
  {
    for (std::size_t k = 0; k < outputs.size(); ++k)
      if (outputs[k] != nullptr) outputs[k][runIndex * scan.times.size() + timeIndex] = state[k];
  }

  Scan finish() { return std::move(scan); }

private:
  Model const& model;
  Scan scan;
  std::vector<double*> outputs; ///< by species, null if not recorded
};

double valueAt(ModelParameter const& parameter, double unit)
{
  if (parameter.scale == ModelParameter::Scale::Logarithmic)
    return parameter.low * std::pow(parameter.high / parameter.low, unit);
  return parameter.low + unit * (parameter.high - parameter.low);
}

std::vector<std::vector<double>> sampleParameters(Model const& model, SimulateOptions const& options)
{
  auto const isVaried = [](ModelParameter const& parameter) { return parameter.isVaried(); };
  auto const dimensions =
      static_cast<std::size_t>(std::count_if(model.parameters.begin(), model.parameters.end(), isVaried));
  std::vector<double> const cube = unitPoints(options.sampling, options.runs, dimensions, options.seed);
  std::vector<std::vector<double>> samples(options.runs);
  auto unit = cube.begin();
  for (auto& sample : samples)
    for (auto const& parameter : model.parameters)
      sample.push_back(parameter.isVaried() ? valueAt(parameter, *unit++) : parameter.nominal);
  return samples;
}

// Steps as long as the error bounds allow; the grid times are interpolated with the method's own continuous
// extension.
void simulateRun(Model const& model, std::vector<double> const& parameters, std::size_t runIndex,
                 std::size_t times, ScanBuilder& builder)
{
  namespace odeint = boost::numeric::odeint;
  auto system = [&](State const& y, State& dy, double) {
    model.rates(y.data(), parameters.data(), dy.data());
  };
  State state;
  for (auto const& species : model.species) state.push_back(species.initial);
  builder.writeState(runIndex, 0, state);

  auto stepper = odeint::make_dense_output(absoluteError, relativeError, odeint::runge_kutta_dopri5<State>());
  stepper.initialize(state, 0.0, model.duration / 1000.0);
  int steps = 0;
  for (std::size_t i = 1; i < times; ++i) {
    double const time = builder.timeAt(i);
    while (stepper.current_time() < time) {
      if (++steps > mostSteps) throw std::runtime_error("the solver needs too many steps");
      stepper.do_step(system);
    }
    stepper.calc_state(time, state);
    if (!std::all_of(state.begin(), state.end(), [](double y) { return std::isfinite(y); }))
      throw std::runtime_error("the solution grows beyond all bounds");
    builder.writeState(runIndex, i, state);
  }
}

} // namespace

Scan simulateScan(Model const& model, SimulateOptions const& options)
{
  if (options.runs < 1) throw std::invalid_argument("a scan has at least one run");
  if (options.times < 2) throw std::invalid_argument("a scan has at least two times");
  auto const samples = sampleParameters(model, options);
  ScanBuilder builder(model, options);
  inParallel(threadCount(options.threads), options.runs, [&](std::size_t run) {
    builder.writeParameters(run, samples[run]);
    try {
      simulateRun(model, samples[run], run, options.times, builder);
    } catch (std::runtime_error const& error) {
      throw std::runtime_error("model " + model.name + ", run " + std::to_string(run) + ": " + error.what());
    }
  });
  return builder.finish();
}

} // namespace runsieve::app
