#pragma once

#include "support/PlotParts.h"
#include "support/Selections.h"
#include "support/TableBuilder.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

using Sample = std::vector<double>;

/// A container whose main table holds nothing but the parameters k1, k2, ...
struct RankedPlot : testing::Test
{
  static constexpr double infinity = std::numeric_limits<double>::infinity();

  PlotContainer container{nullptr};
  std::string warnings; ///< of the last generate(), from standard error
  std::string messages; ///< the same, from standard output

  static vtkSmartPointer<vtkTable> parameterTable(std::vector<Sample> const& samples)
  {
    auto table = vtkSmartPointer<vtkTable>::New();
    for (std::size_t i = 0; i < samples.size(); ++i)
      table->AddColumn(makeColumn("Parameter: k" + std::to_string(i + 1), samples[i]));
    return table;
  }

  void setParameters(std::vector<Sample> const& samples, std::vector<std::pair<double, double>> const& bounds)
  {
    container.plotData = parameterTable(samples);
    container.parameterBounds = bounds;
    container.typedColumnNames.clear();
    container.metaData->parameterColumns.clear();
    for (std::size_t i = 0; i < samples.size(); ++i) {
      container.typedColumnNames.emplace_back(Kestrane::Parameter, "k" + std::to_string(i + 1));
      container.metaData->parameterColumns.push_back(static_cast<int>(i));
    }
  }

  void generate(vtkSmartPointer<vtkTable> table, std::size_t index)
  {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    container.generateRankedParameters(table, index);
    messages = testing::internal::GetCapturedStdout();
    warnings = testing::internal::GetCapturedStderr();
  }

  /// Of the main table, one row per run.
  void generateAll() { generate(container.plotData, 0); }

  /// Of one parameter with the given bounds.
  void generateOne(Sample const& values, double lower, double upper)
  {
    setParameters({values}, {{lower, upper}});
    generateAll();
  }

  Sample sorted(std::string const& name = "k1", std::size_t index = 0)
  {
    return numbers(container.tables.at(index), "Sorted " + name);
  }
  Sample rank(std::string const& name = "k1", std::size_t index = 0)
  {
    return numbers(container.tables.at(index), "Rank of " + name);
  }
  Sample density(std::string const& name = "k1", std::size_t index = 0)
  {
    return numbers(container.tables.at(index + 1), "Density of " + name);
  }
  Sample location(std::string const& name = "k1", std::size_t index = 0)
  {
    return numbers(container.tables.at(index + 1), "Locations of " + name);
  }
};

} // namespace runsieve::test
