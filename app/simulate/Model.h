#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace runsieve::app {

/// A constant of a model and the range from which scans draw it.
struct ModelParameter
{
  enum class Scale
  {
    Linear,
    Logarithmic
  };

  std::string name;
  double nominal; ///< the published value, or the one the documentation of the model gives a reason for
  double low;     ///< equal to high: kept at nominal and left out of scans
  double high;
  Scale scale;
  std::string unit;
  std::string meaning;

  [[nodiscard]] bool isVaried() const { return low < high; }
};

/// A variable of a model.
struct ModelSpecies
{
  std::string name;
  double initial;
  bool recorded; ///< whether scans have a column of it
  std::string unit;
  std::string meaning;
};

/// A system of ordinary differential equations from the literature, for example scans.
struct Model
{
  /// Writes d(state)/dt; the system does not depend on time. State and parameters are in the order of the
  /// lists.
  using Rates = void (*)(double const* state, double const* parameters, double* derivative);

  std::string name; ///< one word, as typed on the command line
  std::string title;
  std::string citation;
  std::string timeUnit;
  double duration = 0.0; ///< of a scan, from time 0
  std::vector<ModelSpecies> species;
  std::vector<ModelParameter> parameters;
  Rates rates = nullptr;
  std::vector<std::string> exampleGates; ///< a selection worth looking at
};

/// All models that there are: a new one is a function that makes it and a row in the table of Models.cpp.
[[nodiscard]] std::vector<Model> const& models();
/// Null if there is none of that name.
[[nodiscard]] Model const* findModel(std::string const& name);
/// The model of the first picture, shown when no data are at hand; its exampleGates let a tenth or so of the
/// runs through.
[[nodiscard]] Model const& exampleModel();

} // namespace runsieve::app
