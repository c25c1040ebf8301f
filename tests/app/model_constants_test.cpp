#include "app/simulate/Model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace runsieve::test {
namespace {

using app::Model;
using app::ModelParameter;
using testing::HasSubstr;

/// Derivatives at the state 7, 18, 29, ... with the first parameter 1 % above its published value, the second
/// one 2 %, and so on, so that no two terms agree by chance.
std::vector<double> ratesOf(std::string const& name)
{
  Model const& model = *app::findModel(name);
  std::vector<double> parameters;
  for (ModelParameter const& parameter : model.parameters)
    parameters.push_back(parameter.nominal * (1.01 + 0.01 * static_cast<double>(parameters.size())));
  std::vector<double> state;
  for (std::size_t i = 0; i < model.species.size(); ++i) state.push_back(7.0 + 11.0 * static_cast<double>(i));
  std::vector<double> derivative(state.size());
  model.rates(state.data(), parameters.data(), derivative.data());
  return derivative;
}

void expectRates(std::string const& model, std::vector<double> const& expected)
{
  std::vector<double> const found = ratesOf(model);
  ASSERT_EQ(found.size(), expected.size()) << model;
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_NEAR(found[i], expected[i], 1e-12 * std::abs(expected[i]) + 1e-13) << model << ", species " << i;
}

// Expected values: the equations as they are printed in the papers, evaluated in Python.
TEST(ModelRates, AreThoseOfTheEquations)
{
  expectRates("repressilator", {6.982851423342634, 10.275454029554155, 2.9406650222949633, 46.8600124040024,
                                123.82538145345669, 200.79075050291098, -9.620678410806619, 512.8344234226046,
                                1.049203047432791});
  expectRates("mapk_cascade",
              {0.08419442927621908, -0.08419442927621908, 0.28476828030314766, -0.005808103311997215,
               -0.2789601769911505, -0.661195790719553, -0.049440923723666264, 0.7106367144432193,
               -1.629654885880536, 1.629654885880536});
  expectRates("toggle_switch", {-6.907623732915742, -10.615828046066344, -23.7914649899526});
}

/// The part of the guide that is about a model, with its line ends as blanks.
std::string guideOf(std::string const& model)
{
  std::ifstream file(RUNSIEVE_SOURCE_DIR "/docs/models.md");
  std::string part;
  bool within = false;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("## ", 0) == 0) within = line == "## " + model;
    if (within) part += line + ' ';
  }
  return part;
}

std::string numberText(double value)
{
  std::ostringstream text;
  text << value;
  return text.str();
}

/// Where the text of a number may be followed by what is said of it.
std::string cellOf(std::string const& row, std::size_t number)
{
  std::istringstream cells(row);
  std::string cell;
  for (std::size_t i = 0; i <= number; ++i) std::getline(cells, cell, '|');
  return cell;
}

TEST(ModelGuide, TellsTheConstantsAndRangesThatAreUsed)
{
  for (Model const& model : app::models()) {
    SCOPED_TRACE(model.name);
    std::string const guide = guideOf(model.name);
    for (ModelParameter const& parameter : model.parameters) {
      std::size_t const at = guide.find("| " + parameter.name + " |");
      ASSERT_NE(at, std::string::npos) << parameter.name;
      std::string const row = guide.substr(at);
      EXPECT_EQ(std::stod(cellOf(row, 2)), parameter.nominal) << parameter.name;
      std::string const range = cellOf(row, 3);
      EXPECT_EQ(std::stod(range), parameter.low) << parameter.name;
      EXPECT_EQ(std::stod(range.substr(range.find(" to ") + 4)), parameter.high) << parameter.name;
      EXPECT_EQ(cellOf(row, 4), parameter.scale == ModelParameter::Scale::Linear ? " linear " : " log ")
          << parameter.name;
      EXPECT_EQ(cellOf(row, 5), ' ' + parameter.unit + ' ') << parameter.name;
    }
  }
}

TEST(ModelGuide, TellsInitialValuesAndOutputs)
{
  for (Model const& model : app::models()) {
    SCOPED_TRACE(model.name);
    std::string const guide = guideOf(model.name);
    std::size_t const outputs = guide.find("Outputs");
    std::size_t const others = guide.find("not written", outputs);
    for (app::ModelSpecies const& species : model.species) {
      if (!species.recorded && model.name == "repressilator") {
        EXPECT_EQ(species.initial, 0.0) << species.name << ": messengers and the dark form";
        continue;
      }
      std::size_t const at = guide.find(species.name + " (" + numberText(species.initial), outputs);
      ASSERT_NE(at, std::string::npos) << species.name;
      EXPECT_EQ(species.recorded, at < others) << species.name;
    }
  }
}

TEST(ModelGuide, TellsTheExampleGatesAndTheTime)
{
  for (Model const& model : app::models()) {
    SCOPED_TRACE(model.name);
    std::string const guide = guideOf(model.name);
    for (std::string const& gate : model.exampleGates)
      EXPECT_THAT(guide, HasSubstr('"' + gate.substr(std::string("Molecule: ").size()) + '"'));
    EXPECT_THAT(guide, HasSubstr(model.title + ": " + model.citation));
  }
  std::map<std::string, double> const durations = {
      {"repressilator", 300}, {"mapk_cascade", 4000}, {"toggle_switch", 20}};
  for (auto const& [name, duration] : durations) EXPECT_EQ(app::findModel(name)->duration, duration) << name;
}

} // namespace
} // namespace runsieve::test
