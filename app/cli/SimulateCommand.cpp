#include "app/cli/Commands.h"

#include "app/simulate/SimulateScan.h"
#include <runsieve/core/text/Decimal.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/write/WriteScan.h>

#include <iostream>
#include <random>

namespace runsieve::app {

namespace {

Model const& chosenModel(std::string const& name)
{
  if (name.empty()) return exampleModel();
  if (Model const* model = findModel(name)) return *model;
  std::string names;
  for (auto const& model : models()) names += (names.empty() ? "" : ", ") + model.name;
  throw UsageError("there is no model " + quoted(name) + "; there are " + names);
}

void describe(Model const& model)
{
  std::cout << model.name << ": " << model.title << '\n'
            << model.citation << '\n'
            << "from 0 to " << decimal(model.duration) << ' ' << model.timeUnit
            << "\n\nspecies, initially:\n";
  for (auto const& species : model.species)
    std::cout << "  " << species.name << " = " << decimal(species.initial) << " [" << species.unit << "] "
              << species.meaning << (species.recorded ? "" : " (not recorded)") << '\n';
  std::cout << "\nparameters, with the range of scans:\n";
  for (auto const& parameter : model.parameters) {
    std::cout << "  " << parameter.name << " = " << decimal(parameter.nominal) << " [" << parameter.unit
              << "] ";
    if (parameter.isVaried())
      std::cout << decimal(parameter.low) << ".." << decimal(parameter.high)
                << (parameter.scale == ModelParameter::Scale::Logarithmic ? " logarithmic, " : " linear, ");
    std::cout << parameter.meaning << '\n';
  }
  std::cout << "\ngates worth trying:\n";
  for (auto const& gate : model.exampleGates) std::cout << "  " << gate << '\n';
}

// 32 bits, short enough to be typed again.
std::uint64_t newSeed()
{
  return std::random_device()();
}

} // namespace

int runSimulate(SimulateArguments const& arguments)
{
  if (arguments.list) {
    for (auto const& model : models()) std::cout << model.name << '\n';
    return 0;
  }
  Model const& model = chosenModel(arguments.model);
  if (arguments.describe) {
    describe(model);
    return 0;
  }
  SimulateOptions options;
  options.runs = arguments.runs;
  options.times = arguments.times;
  options.seed = arguments.seed.value_or(newSeed());
  options.sampling = arguments.sampling;
  auto const scan = simulateScan(model, options);

  bool const toStandardOutput = arguments.output == "-";
  if (toStandardOutput)
    writeScan(scan, std::cout);
  else
    writeScan(scan, arguments.output);
  std::ostream& report = toStandardOutput ? std::cerr : std::cout;
  report << model.title << ": " << model.citation << '\n'
         << options.runs << " runs x " << options.times << " times, " << scan.parameters.size()
         << " parameters, seed " << options.seed << '\n';
  if (!toStandardOutput) report << "written to " << arguments.output << '\n';
  return 0;
}

} // namespace runsieve::app
