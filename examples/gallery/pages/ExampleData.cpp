#include "ExampleData.h"

#include <vtkDoubleArray.h>
#include <vtkNew.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace gallery {

namespace {

constexpr double halfAnHour = 1800.0; ///< seconds

double decay(double perHour, double seconds)
{
  return std::exp(-perHour * seconds / 3600.0);
}

} // namespace

double RandomNumbers::unit()
{
  constexpr double step = 1.0 / 9007199254740992.0; // 2^-53
  return (static_cast<double>(engine() >> 11) + 0.5) * step;
}

double RandomNumbers::uniform(double lower, double upper)
{
  return lower + (upper - lower) * unit();
}

double RandomNumbers::logUniform(double lower, double upper)
{
  return std::exp(uniform(std::log(lower), std::log(upper)));
}

double RandomNumbers::normal(double mean, double standardDeviation)
{
  // Box and Muller, Ann. Math. Stat. 29:610-611 (1958)
  constexpr double twoPi = 6.283185307179586;
  const double radius = std::sqrt(-2.0 * std::log(unit()));
  return mean + standardDeviation * radius * std::cos(twoPi * unit());
}

double Stimulation::receptor(double seconds) const
{
  return receptors * binding / (binding - uptake) * (decay(uptake, seconds) - decay(binding, seconds));
}

double Stimulation::activeKinase(double seconds) const
{
  auto share = [this, seconds](double rate) {
    return (decay(rate, seconds) - decay(dephosphorylation, seconds)) / (dephosphorylation - rate);
  };
  const double micromolar = receptors / 1000.0;
  const double drive =
      phosphorylation * micromolar * binding / (binding - uptake) * (share(uptake) - share(binding));
  return kinase * drive / (1.0 + drive); // no more than there is
}

Stimulation randomStimulation(RandomNumbers& random)
{
  Stimulation cell;
  cell.binding = random.logUniform(7.0, 70.0);
  cell.uptake = random.logUniform(2.0, 20.0);
  cell.phosphorylation = random.logUniform(40.0, 400.0);
  cell.dephosphorylation = random.logUniform(4.0, 40.0);
  cell.receptors = random.uniform(50.0, 150.0);
  return cell;
}

std::vector<double> timesUntil(double end, int points)
{
  std::vector<double> times;
  for (int i = 0; i < points; ++i) times.push_back(end * i / (points - 1));
  return times;
}

boost::shared_ptr<LinePlotTable> stimulationScan(int runs)
{
  const std::vector<double> times = timesUntil(halfAnHour, 61);
  auto scan = boost::make_shared<LinePlotTable>();
  scan->trajectoryCount = static_cast<std::uint64_t>(runs);
  scan->trajectoryLength = times.size();
  scan->parameterBounds = {{7.0, 70.0}, {2.0, 20.0}, {40.0, 400.0}, {4.0, 40.0}, {50.0, 150.0}};
  double* kinase = scan->addColumn(Kestrane::Molecule, "ERK-PP");
  double* receptor = scan->addColumn(Kestrane::Molecule, "EGFR-P");
  double* time = scan->addColumn(Kestrane::Unnamed, "Time [s]");
  double* index = scan->addColumn(Kestrane::Unnamed, "Run Index");
  std::array<double*, 5> parameters{};
  const std::array<const char*, 5> names = {"kon", "kint", "kcat", "kdp", "EGFR_0"};
  for (std::size_t p = 0; p < names.size(); ++p)
    parameters[p] = scan->addColumn(Kestrane::Parameter, names[p]);

  RandomNumbers random(2000);
  std::size_t row = 0;
  for (int run = 0; run < runs; ++run) {
    const Stimulation cell = randomStimulation(random);
    const std::array<double, 5> values = {cell.binding, cell.uptake, cell.phosphorylation,
                                          cell.dephosphorylation, cell.receptors};
    for (double t : times) {
      kinase[row] = cell.activeKinase(t);
      receptor[row] = cell.receptor(t);
      time[row] = t;
      index[row] = run;
      for (std::size_t p = 0; p < values.size(); ++p) parameters[p][row] = values[p];
      ++row;
    }
  }
  return scan;
}

vtkSmartPointer<vtkTable>
tableOf(std::initializer_list<std::pair<const char*, std::vector<double> const*>> columns)
{
  auto table = vtkSmartPointer<vtkTable>::New();
  for (auto const& [name, values] : columns) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(name);
    for (double value : *values) column->InsertNextValue(value);
    table->AddColumn(column);
  }
  return table;
}

vtkSmartPointer<vtkTable> peakTable(int runs)
{
  std::vector<double> binding;
  std::vector<double> uptake;
  std::vector<double> phosphorylation;
  std::vector<double> dephosphorylation;
  std::vector<double> peaks;
  RandomNumbers random(1995);
  const std::vector<double> times = timesUntil(halfAnHour, 181);
  for (int run = 0; run < runs; ++run) {
    const Stimulation cell = randomStimulation(random);
    double peak = 0.0;
    for (double t : times) peak = std::max(peak, cell.activeKinase(t));
    binding.push_back(cell.binding);
    uptake.push_back(cell.uptake);
    phosphorylation.push_back(cell.phosphorylation);
    dephosphorylation.push_back(cell.dephosphorylation);
    peaks.push_back(peak);
  }
  return tableOf({{"kon", &binding},
                  {"kint", &uptake},
                  {"kcat", &phosphorylation},
                  {"kdp", &dephosphorylation},
                  {"pERK", &peaks}});
}

} // namespace gallery
