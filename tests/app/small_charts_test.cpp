#include "app/view/ScanPlot.h"
#include "app/view/SmallCharts.h"

#include "support/PlotScene.h"
#include "support/ScanBuilder.h"

#include <runsieve/adapters/ScanTable.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vtkAxis.h>
#include <vtkDoubleArray.h>
#include <vtkStringArray.h>

#include <string>
#include <vector>

namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::SizeIs;

/// A composite view of a scan whose first parameter is a text.
struct TextAxes : testing::Test, PlotScene
{
  Scan scan;

  void show(std::vector<std::string> const& texts, int parameters = 4, int width = 768)
  {
    ScanShape shape;
    shape.runs = 20;
    shape.times = 2;
    shape.parameters = parameters;
    shape.bounds.assign(static_cast<std::size_t>(parameters), {0.0, 20.0});
    shape.parameter = [&](int p, int r) { return p == 0 ? r % static_cast<int>(texts.size()) : 0.5 * r; };
    auto const record = makeScan(shape);
    scan = scanOf(record);
    scan.parameters[0].texts = texts;
    app::showScan(container, record, {});
    app::nameTexts(container, scan, width);
  }

  [[nodiscard]] vtkAxis* axis(int column)
  {
    return container.chartMatrix->GetChart({column, 0})->GetAxis(vtkAxis::BOTTOM);
  }
  [[nodiscard]] std::vector<std::string> labels(int column)
  {
    std::vector<std::string> found;
    vtkStringArray* texts = axis(column)->GetTickLabels();
    for (vtkIdType i = 0; i < texts->GetNumberOfValues(); ++i) found.push_back(texts->GetValue(i));
    return found;
  }
};

TEST_F(TextAxes, HaveTheTextsInPlaceOfTheirNumbers)
{
  show({"wt", "A3", "B1"});
  EXPECT_THAT(labels(0), ElementsAre("wt", "A3", "B1"));
  vtkDoubleArray* places = axis(0)->GetTickPositions();
  EXPECT_EQ(places->GetValue(0), 0.0);
  EXPECT_EQ(places->GetValue(2), 2.0);
}

TEST_F(TextAxes, AreThoseOfTextParametersOnly)
{
  show({"wt", "A3", "B1"});
  EXPECT_THAT(labels(1), Not(Contains("wt")));
}

TEST_F(TextAxes, CutLongTextsToTheRoomThereIs)
{
  show({"wild type of 1998", "knock-out"});
  EXPECT_THAT(labels(0), ElementsAre("wild type..", "knock-out"))
      << "nine characters, of 18 in one of four charts";
  show({"wild type of 1998", "knock-out"}, 1);
  EXPECT_THAT(labels(0), ElementsAre("wild type of 1998", "knock-out"));
}

TEST_F(TextAxes, CutBetweenCharacters)
{
  show({"\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc\u00e4", "b"});
  EXPECT_EQ(labels(0).front(), "\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc..");
}

TEST_F(TextAxes, OfManyTextsNameSome)
{
  show({"a", "b", "c", "d", "e", "f", "g"});
  EXPECT_THAT(labels(0), ElementsAre("a", "c", "e", "g"));
  show({"a", "b", "c", "d", "e", "f"});
  EXPECT_THAT(labels(0), SizeIs(6));
}

} // namespace
} // namespace runsieve::test
