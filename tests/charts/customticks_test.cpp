#include "support/PlotScene.h"

#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

/// Tick texts of a plot and of a host on one axis.
struct CustomTicksTest : testing::Test, PlotScene
{
  CustomTicksTest() { container.setPlotData(makeTable({{"x", {0, 1, 2}}, {"y", {1, 2, 3}}})); }

  void setByHost(std::string const& text)
  {
    vtkNew<vtkDoubleArray> positions;
    positions->InsertNextValue(1.0);
    vtkNew<vtkStringArray> texts;
    texts->InsertNextValue(text);
    bottom()->SetCustomTickPositions(positions, texts);
  }

  std::vector<std::string> texts()
  {
    std::vector<std::string> shown;
    for (vtkIdType i = 0; i < bottom()->GetTickLabels()->GetNumberOfValues(); ++i)
      shown.push_back(bottom()->GetTickLabels()->GetValue(i));
    return shown;
  }

  bool custom(std::string const& text) { return texts() == std::vector<std::string>{text}; }
};

TEST_F(CustomTicksTest, TicksThatAHostHasSetByItselfSurviveARedraw)
{
  container.redraw();
  setByHost("middle");
  container.redraw();
  EXPECT_TRUE(custom("middle"));
}

TEST_F(CustomTicksTest, TicksOfThePlotGoWithItsTexts)
{
  container.setXTickLabels({"one"});
  container.redraw();
  ASSERT_TRUE(custom("one"));
  container.setXTickLabels({});
  container.redraw();
  EXPECT_FALSE(custom("one"));
}

TEST_F(CustomTicksTest, TicksThatAHostPutsInPlaceOfThoseOfThePlotStay)
{
  container.setXTickLabels({"one"});
  container.redraw();
  setByHost("middle");
  container.setXTickLabels({});
  container.redraw();
  EXPECT_TRUE(custom("middle"));
}

TEST_F(CustomTicksTest, TheLargeChartOfPairsKeepsTicksOfAHostToo)
{
  container.setPlotData(makeTable({{"x", {0, 1}}, {"Parameter: a", {1, 2}}, {"Parameter: b", {3, 4}}}));
  settings().parameterColumns = {1, 2};
  container.setPlotStyle(multiPlot);
  setByHost("middle");
  container.redraw();
  EXPECT_TRUE(custom("middle"));
}

} // namespace
} // namespace runsieve::test
