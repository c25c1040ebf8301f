#include <runsieve/adapters/SobolTable.h>

#include <runsieve/records/SobolPostProcessResult.h>
#include <runsieve/tables/ColumnNames.h>

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

#include <algorithm>
#include <limits>
#include <locale>
#include <sstream>
#include <vector>

namespace runsieve {

namespace {

using Indices = SobolPostProcessResult::Indices;

/// One cell of the table; NaN where the block has a gap.
float shownIndex(Indices const& block, std::size_t species, std::size_t time, std::size_t parameter)
{
  if (species >= block.size() || time >= block[species].size() || parameter >= block[species][time].size())
    return std::numeric_limits<float>::quiet_NaN();
  const double index = block[species][time][parameter];
  return static_cast<float>(index < 0.0 ? 0.0 : index); // keeps NaN
}

/// The outputs that get a bar. The last entry never does.
std::vector<std::size_t> outputsWithBars(SobolPostProcessResult const& result)
{
  std::vector<std::size_t> shown;
  for (std::size_t s = 0; s + 1 < result.species.size(); ++s) {
    const Kestrane::DataType type = result.species[s].first;
    if (type == Kestrane::Molecule || type == Kestrane::ComplexWithMolecule || type == Kestrane::Pattern)
      shown.push_back(s);
  }
  return shown;
}

/// Adds one column per parameter, with a row for each of `rows` indices.
template <class Index>
void addParameterColumns(vtkTable* table, SobolPostProcessResult const& result, std::size_t rows,
                         Index&& index)
{
  const std::size_t parameters = std::min(result.parameters.size(), result.parameterNames.size());
  for (std::size_t p = 0; p < parameters; ++p) {
    vtkNew<vtkFloatArray> column;
    column->SetName(result.parameterNames[p].c_str());
    for (std::size_t row = 0; row < rows; ++row) column->InsertNextValue(index(row, p));
    table->AddColumn(column);
  }
}

void addLabels(vtkTable* table, SobolPostProcessResult const& result, std::vector<std::size_t> const& outputs)
{
  vtkNew<vtkStringArray> names;
  names->SetName("Name");
  for (std::size_t s : outputs) names->InsertNextValue(typedColumnName(result.species[s]));
  table->AddColumn(names);
}

void addTimes(vtkTable* table, std::vector<double> const& times)
{
  vtkNew<vtkFloatArray> column;
  column->SetName("Time");
  for (double time : times) column->InsertNextValue(static_cast<float>(time));
  table->AddColumn(column);
}

std::string timeTitle(double time)
{
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << "Sensitivities at t= " << time << " s";
  return text.str();
}

SobolTable atTime(SobolPostProcessResult const& result, Indices const& block, std::size_t time)
{
  SobolTable made{vtkSmartPointer<vtkTable>::New(), timeTitle((*result.times)[time])};
  const std::vector<std::size_t> outputs = outputsWithBars(result);
  addParameterColumns(made.table, result, outputs.size(), [&](std::size_t row, std::size_t p) {
    return shownIndex(block, outputs[row], time, p);
  });
  addLabels(made.table, result, outputs);
  return made;
}

SobolTable overTime(SobolPostProcessResult const& result, Indices const& block, std::size_t species)
{
  SobolTable made{vtkSmartPointer<vtkTable>::New(),
                  "Sensitivity of " + typedColumnName(result.species[species])};
  addParameterColumns(made.table, result, result.times->size(),
                      [&](std::size_t row, std::size_t p) { return shownIndex(block, species, row, p); });
  addTimes(made.table, *result.times);
  return made;
}

} // namespace

SobolTable sobolTable(SobolPostProcessResult const& result, SobolSlice const& slice)
{
  Indices const* block = slice.total ? result.totalSensitivities : result.sensitivities;
  if (!block || !result.times) return {};
  const bool exists = slice.atSingleTime ? slice.timeIndex < result.times->size()
                                         : slice.speciesIndex < result.species.size();
  if (!exists) return {};
  SobolTable made = slice.atSingleTime ? atTime(result, *block, slice.timeIndex)
                                       : overTime(result, *block, slice.speciesIndex);
  if (slice.total) made.title = "Total " + made.title;
  return made;
}

} // namespace runsieve
