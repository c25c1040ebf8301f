#include "app/simulate/SimulateScan.h"

#include <runsieve/core/parallel/Parallel.h>
#include <runsieve/core/scan/ParameterBounds.h>

#include <boost/make_shared.hpp>
#include <boost/numeric/odeint.hpp>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve::app {

namespace {

using State = std::vector<double>;

constexpr double absoluteError = 1e-8; // of one step, in the units of the state
constexpr double relativeError = 1e-8;
constexpr int mostSteps = 1000000;

/// The columns of a scan of one model.
class ScanBuilder
{
public:
  ScanBuilder(Model const& scannedModel, SimulateOptions const& options)
      : model(scannedModel), times(options.times), scan(boost::make_shared<LinePlotTable>())
  {
    scan->trajectoryCount = options.runs;
    scan->trajectoryLength = options.times;
    for (auto const& species : model.species)
      outputs.push_back(species.recorded ? scan->addColumn(Kestrane::Molecule, species.name) : nullptr);
    time = scan->addColumn(Kestrane::Unnamed, "Time [" + model.timeUnit + ']');
    run = scan->addColumn(Kestrane::Unnamed, "Run Index");
    for (auto const& parameter : model.parameters)
      varied.push_back(parameter.isVaried() ? scan->addColumn(Kestrane::Parameter, parameter.name) : nullptr);
  }

  double timeAt(std::size_t i) const
  {
    return model.duration * static_cast<double>(i) / static_cast<double>(times - 1);
  }

  void writeConstants(std::size_t runIndex, std::vector<double> const& parameters)
  {
    std::size_t const start = runIndex * times;
    for (std::size_t i = 0; i < times; ++i) time[start + i] = timeAt(i);
    std::fill_n(run + start, times, static_cast<double>(runIndex));
    for (std::size_t k = 0; k < varied.size(); ++k)
      if (varied[k] != nullptr) std::fill_n(varied[k] + start, times, parameters[k]);
  }

  void writeState(std::size_t runIndex, std::size_t timeIndex, State const& state)
  {
    for (std::size_t k = 0; k < outputs.size(); ++k)
      if (outputs[k] != nullptr) outputs[k][runIndex * times + timeIndex] = state[k];
  }

  boost::shared_ptr<LinePlotTable> finish()
  {
    for (double const* column : varied)
      if (column != nullptr)
        scan->parameterBounds.push_back(boundsOfRuns(column, scan->trajectoryCount, times));
    return scan;
  }

private:
  Model const& model;
  std::size_t times;
  boost::shared_ptr<LinePlotTable> scan;
  std::vector<double*> outputs; ///< by species, null if not recorded
  std::vector<double*> varied;  ///< by parameter, null if kept constant
  double* time = nullptr;
  double* run = nullptr;
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

boost::shared_ptr<LinePlotTable> simulateScan(Model const& model, SimulateOptions const& options)
{
  if (options.runs < 1) throw std::invalid_argument("a scan has at least one run");
  if (options.times < 2) throw std::invalid_argument("a scan has at least two times");
  auto const samples = sampleParameters(model, options);
  ScanBuilder builder(model, options);
  inParallel(threadCount(options.threads), options.runs, [&](std::size_t run) {
    builder.writeConstants(run, samples[run]);
    try {
      simulateRun(model, samples[run], run, options.times, builder);
    } catch (std::runtime_error const& error) {
      throw std::runtime_error("model " + model.name + ", run " + std::to_string(run) + ": " + error.what());
    }
  });
  return builder.finish();
}

} // namespace runsieve::app
