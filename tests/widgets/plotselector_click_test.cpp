#include "support/SelectorTree.h"

#include <gmock/gmock.h>

using Kestrane::Complex;
using Kestrane::Molecule;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

namespace runsieve::test {
namespace {

using PlotSelectorClickTest = SelectorTree;

TEST_F(PlotSelectorClickTest, AClickSelectsOneItem)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}, {Complex, "c"}});
  show();
  click(child(1, 0));
  ASSERT_THAT(announced, SizeIs(1));
  EXPECT_THAT(announced.back(), ElementsAre(Item{Molecule, "a"}));
  click(child(0, 0));
  EXPECT_THAT(announced.back(), ElementsAre(Item{Complex, "c"}));
}

TEST_F(PlotSelectorClickTest, AClickWithCtrlAddsAnItemAndAnotherTakesItAway)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}, {Complex, "c"}});
  show();
  click(child(1, 0));
  click(child(0, 0), Qt::ControlModifier);
  EXPECT_THAT(announced.back(), UnorderedElementsAre(Item{Molecule, "a"}, Item{Complex, "c"}));
  click(child(1, 0), Qt::ControlModifier);
  EXPECT_THAT(announced.back(), ElementsAre(Item{Complex, "c"}));
}

TEST_F(PlotSelectorClickTest, AClickWithShiftSelectsARangeWithoutItsGroups)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}, {Complex, "c"}});
  show();
  click(child(0, 0));
  click(child(1, 1), Qt::ShiftModifier);
  EXPECT_THAT(announced.back(),
              UnorderedElementsAre(Item{Complex, "c"}, Item{Molecule, "a"}, Item{Molecule, "b"}));
}

TEST_F(PlotSelectorClickTest, AClickOnAGroupSelectsNothing)
{
  prepare({{Molecule, "a"}});
  show();
  click(tree.topLevelItem(0));
  EXPECT_THAT(tree.selectedItems(), IsEmpty());
  for (Items const& items : announced) EXPECT_THAT(items, IsEmpty());
}

TEST_F(PlotSelectorClickTest, WithSingleSelectionCtrlAddsNothing)
{
  tree.setMultipleSelections(false);
  prepare({{Molecule, "a"}, {Molecule, "b"}});
  show();
  click(child(0, 0));
  click(child(0, 1), Qt::ControlModifier);
  EXPECT_THAT(announced.back(), ElementsAre(Item{Molecule, "b"}));
}

TEST_F(PlotSelectorClickTest, WithMultipleSelectionsEachPlainClickAddsOrTakesAway)
{
  tree.setMultipleSelections(true);
  prepare({{Molecule, "a"}, {Molecule, "b"}});
  show();
  click(child(0, 0));
  click(child(0, 1));
  EXPECT_THAT(announced.back(), UnorderedElementsAre(Item{Molecule, "a"}, Item{Molecule, "b"}));
  click(child(0, 0));
  EXPECT_THAT(announced.back(), ElementsAre(Item{Molecule, "b"}));
}

} // namespace
} // namespace runsieve::test
