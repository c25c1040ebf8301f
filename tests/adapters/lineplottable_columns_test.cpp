#include "support/LoadedTable.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

using Column = Kestrane::TypedConcentrationName;

/// What a record of stacked runs shows at first.
using ChosenColumnsTest = LoadedTable;

TEST_F(ChosenColumnsTest, ChoosesColumnsColoursAndLabels)
{
  ScanShape shape;
  shape.species = 2;
  load(makeScan(shape));
  EXPECT_THAT(settings().xColumns, ElementsAre(2));
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
  EXPECT_THAT(settings().zColumns, ElementsAre(1));
  EXPECT_EQ(settings().colorColumn, 4);
  EXPECT_EQ(settings().xLabel, "Time [s]");
  EXPECT_EQ(settings().yLabel, "A");
  EXPECT_EQ(settings().getStride(), 3);
  EXPECT_EQ(settings().getPlotStyle(), scatterPlot) << "the style is the host's choice";
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 0), ": Time [s]") << "drawn at once";
  EXPECT_EQ(bottom()->GetTitle(), "Time [s]");
}

TEST_F(ChosenColumnsTest, ColumnListsThatAreEmptyGrow)
{
  settings().xColumns.clear();
  settings().yColumns.clear();
  settings().zColumns.clear();
  load(makeScan({}));
  EXPECT_THAT(settings().xColumns, ElementsAre(1));
  EXPECT_THAT(settings().yColumns, ElementsAre(0));
  EXPECT_THAT(settings().zColumns, ElementsAre(1));
}

TEST_F(ChosenColumnsTest, FurtherEntriesOfTheColumnListsStay)
{
  settings().xColumns = {5, 6};
  load(makeScan({}));
  EXPECT_THAT(settings().xColumns, ElementsAre(1, 6));
}

struct XColumnCase
{
  std::vector<Column> columns;
  int expected;
};

struct XColumnTest : ChosenColumnsTest, testing::WithParamInterface<XColumnCase>
{};

TEST_P(XColumnTest, IsFoundByName)
{
  load(recordOf(GetParam().columns));
  EXPECT_EQ(settings().xColumns[0], GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Records, XColumnTest,
    testing::Values(
        // the last "Value" wins over other unnamed columns
        XColumnCase{{{Kestrane::Molecule, "A"},
                     {Kestrane::Unnamed, "Other"},
                     {Kestrane::Unnamed, "Value"},
                     {Kestrane::Unnamed, "Value"},
                     {Kestrane::Unnamed, "Run Index"}},
                    3},
        // "Time [s]" wins over any "Value"
        XColumnCase{
            {{Kestrane::Unnamed, "Value"}, {Kestrane::Unnamed, "Value"}, {Kestrane::Unnamed, "Time [s]"}}, 2},
        // the search ends at the first "Time [s]"
        XColumnCase{{{Kestrane::Unnamed, "Time [s]"}, {Kestrane::Unnamed, "Value"}}, 0},
        // of other names the first counts
        XColumnCase{{{Kestrane::Molecule, "A"}, {Kestrane::Unnamed, "p"}, {Kestrane::Unnamed, "q"}}, 1},
        // the name counts for unnamed columns only
        XColumnCase{{{Kestrane::Molecule, "Time [s]"}, {Kestrane::Unnamed, "q"}}, 1},
        // no unnamed column: two places before the first parameter
        XColumnCase{{{Kestrane::Molecule, "A"},
                     {Kestrane::Molecule, "B"},
                     {Kestrane::Molecule, "C"},
                     {Kestrane::Molecule, "D"},
                     {Kestrane::Molecule, "E"},
                     {Kestrane::Parameter, "k"}},
                    3},
        // neither that nor parameters: the last column
        XColumnCase{{{Kestrane::Molecule, "A"}, {Kestrane::Molecule, "B"}}, 1}));

TEST_F(ChosenColumnsTest, WithoutParametersPointsAreColouredByTheXColumn)
{
  ScanShape shape;
  shape.parameters = 0;
  load(makeScan(shape));
  EXPECT_EQ(settings().colorColumn, 1);
}

TEST_F(ChosenColumnsTest, AnXColumnThatDoesNotExistIsKeptWithoutLabelAndPlot)
{
  load(recordOf({{Kestrane::Molecule, "A"}, {Kestrane::Parameter, "k"}}));
  EXPECT_THAT(settings().xColumns, ElementsAre(-1));
  EXPECT_EQ(settings().xLabel, "");
  EXPECT_EQ(settings().yLabel, "A");
  EXPECT_EQ(drawnColumn(chart()->GetPlot(0), 1), "");
}

} // namespace
} // namespace runsieve::test
