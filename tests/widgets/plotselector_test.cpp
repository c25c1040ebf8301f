#include "support/MetaMethods.h"
#include "support/SelectorTree.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace runsieve::test {
namespace {

using Kestrane::Complex;
using Kestrane::ComplexWithMolecule;
using Kestrane::Molecule;
using Kestrane::Parameter;
using Kestrane::Pattern;
using Kestrane::UndefinedType;
using Kestrane::Unnamed;

using PlotSelectorTest = SelectorTree;

TEST_F(PlotSelectorTest, ANewTreeHasOneColumnAndAHeader)
{
  EXPECT_EQ(tree.columnCount(), 1);
  EXPECT_EQ(tree.headerItem()->text(0), "Select Items to View");
  EXPECT_EQ(tree.selectionMode(), QAbstractItemView::ExtendedSelection);
  EXPECT_EQ(tree.topLevelItemCount(), 0);
}

TEST_F(PlotSelectorTest, BelongsToItsParent)
{
  QWidget parent;
  auto* owned = new PlotSelector(&parent);
  EXPECT_EQ(owned->parentWidget(), &parent);
}

TEST_F(PlotSelectorTest, HostsFindSlotAndSignalByTheirText)
{
  QMetaObject const& meta = PlotSelector::staticMetaObject;
  EXPECT_THAT(
      metaMethods(meta),
      ElementsAre("signal notifySelectionChanged(std::vector<Kestrane::TypedConcentrationName>* items)",
                  "slot processNewSelection()"));
  EXPECT_EQ(meta.indexOfSlot("processNewSelection()"), meta.methodOffset() + 1);
  EXPECT_EQ(meta.indexOfSignal(QMetaObject::normalizedSignature(
                "notifySelectionChanged(std::vector<Kestrane::TypedConcentrationName> *)")),
            meta.methodOffset());
}

TEST_F(PlotSelectorTest, ItemsStandInGroupsBothInAlphabeticalOrder)
{
  fill({{Molecule, "b"}, {Complex, "a"}, {Molecule, "a"}});
  EXPECT_THAT(content(), ElementsAre("Complex/a", "Molecule/a", "Molecule/b"));
  EXPECT_EQ(tree.topLevelItemCount(), 2);
}

TEST_F(PlotSelectorTest, GroupsBearTheNamesOfTheTypes)
{
  fill({{Complex, "0"},
        {Molecule, "1"},
        {ComplexWithMolecule, "2"},
        {Pattern, "3"},
        {Unnamed, "4"},
        {Parameter, "5"},
        {UndefinedType, "6"},
        {static_cast<Kestrane::DataType>(7), "7"},
        {static_cast<Kestrane::DataType>(-1), "8"}});
  EXPECT_THAT(content(), ElementsAre("/4", "/7", "/8", "Complex/0", "Complex With Molecule/2", "Molecule/1",
                                     "Parameter/5", "Pattern/3", "Undefined Type/6"));
}

TEST_F(PlotSelectorTest, GroupsCannotBeSelectedButItemsCan)
{
  fill({{Molecule, "a"}});
  EXPECT_EQ(static_cast<int>(tree.topLevelItem(0)->flags()), 32);
  EXPECT_EQ(static_cast<int>(child(0, 0)->flags()), 49);
}

TEST_F(PlotSelectorTest, NamesKeepCharactersOfOneByteInBothDirections)
{
  prepare({{Molecule, "\xe9\xb5"}});
  EXPECT_EQ(child(0, 0)->text(0), QString::fromLatin1("\xe9\xb5"));
  child(0, 0)->setSelected(true);
  EXPECT_THAT(announced, ElementsAre(Items{{Molecule, "\xe9\xb5"}}));
}

TEST_F(PlotSelectorTest, EachRefillAnnouncesOnce)
{
  fill({{Molecule, "b"}, {Complex, "a"}});
  EXPECT_THAT(announced, ElementsAre(IsEmpty()));
  child(0, 0)->setSelected(true);
  child(1, 0)->setSelected(true);
  announced.clear();
  fill({{Molecule, "b"}, {Complex, "a"}});
  EXPECT_THAT(announced, SizeIs(1));
}

TEST_F(PlotSelectorTest, AnEmptyListEmptiesTheTreeAndAnnouncesNothingSelected)
{
  prepare({{Molecule, "b"}});
  child(0, 0)->setSelected(true);
  announced.clear();
  fill({});
  EXPECT_EQ(tree.topLevelItemCount(), 0);
  EXPECT_THAT(announced, ElementsAre(IsEmpty()));
}

TEST_F(PlotSelectorTest, TheOptionsStayAsTheyWere)
{
  Items options{{Molecule, "b"}, {Complex, "a"}};
  Items const before = options;
  tree.setSelectionOptions(options);
  EXPECT_EQ(options, before);
}

TEST_F(PlotSelectorTest, EqualOptionsAreItemsOfTheirOwn)
{
  prepare({{Molecule, "a"}, {Molecule, "a"}});
  ASSERT_EQ(tree.topLevelItem(0)->childCount(), 2);
  child(0, 0)->setSelected(true);
  child(0, 1)->setSelected(true);
  EXPECT_EQ(announced.back(), (Items{{Molecule, "a"}, {Molecule, "a"}}));
}

TEST_F(PlotSelectorTest, SelectionsComeBackWithTheTypeThatTheGroupTells)
{
  std::vector<std::pair<Kestrane::DataType, Kestrane::DataType>> const types{
      {Complex, Complex},        {Molecule, Molecule}, {ComplexWithMolecule, ComplexWithMolecule},
      {Pattern, Pattern},        {Unnamed, Parameter}, {Parameter, Parameter},
      {UndefinedType, Parameter}};
  for (auto const& [given, found] : types) {
    prepare({{given, "x"}});
    child(0, 0)->setSelected(true);
    EXPECT_THAT(announced, ElementsAre(Items{{found, "x"}})) << given;
  }
}

TEST_F(PlotSelectorTest, TitlesInThePluralAreUnderstood)
{
  std::vector<std::pair<char const*, Kestrane::DataType>> const titles{
      {"Complexes", Complex},   {"Molecules", Molecule}, {"Complexes With Molecules", ComplexWithMolecule},
      {"Patterns", Pattern},    {"molecule", Parameter}, {"Molecule ", Parameter},
      {"Parameters", Parameter}};
  for (auto const& [title, type] : titles) {
    prepare({});
    auto* group = new QTreeWidgetItem(&tree, {title});
    auto* item = new QTreeWidgetItem(group, {"x"});
    item->setSelected(true);
    EXPECT_THAT(announced, ElementsAre(Items{{type, "x"}})) << title;
  }
}

TEST_F(PlotSelectorTest, TheCurrentItemStaysCurrentAndSelectedAfterARefill)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}, {Complex, "b"}});
  tree.setCurrentItem(child(1, 1));
  announced.clear();
  fill({{Molecule, "b"}, {Complex, "b"}, {Pattern, "new"}});
  ASSERT_TRUE(tree.currentItem());
  EXPECT_EQ(tree.currentItem()->text(0), "b");
  EXPECT_EQ(tree.currentItem()->parent()->text(0), "Molecule");
  EXPECT_TRUE(tree.currentItem()->isSelected());
  EXPECT_THAT(announced, ElementsAre(Items{{Molecule, "b"}}));
}

TEST_F(PlotSelectorTest, OnlyTheCurrentItemOfSeveralSelectedIsRestored)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}});
  child(0, 0)->setSelected(true);
  tree.setCurrentItem(child(0, 1), 0, QItemSelectionModel::Select);
  ASSERT_THAT(announced.back(), SizeIs(2));
  announced.clear();
  fill({{Molecule, "a"}, {Molecule, "b"}});
  EXPECT_THAT(announced, ElementsAre(Items{{Molecule, "b"}}));
}

TEST_F(PlotSelectorTest, AFormerItemThatIsGoneLeavesNoneCurrent)
{
  prepare({{Molecule, "a"}, {Molecule, "b"}});
  tree.setCurrentItem(child(0, 0));
  announced.clear();
  fill({{Molecule, "b"}, {Complex, "a"}});
  EXPECT_EQ(tree.currentItem(), nullptr);
  EXPECT_THAT(announced, ElementsAre(IsEmpty()));
}

TEST_F(PlotSelectorTest, OfEqualItemsTheLastBecomesCurrent)
{
  prepare({{Molecule, "a"}});
  tree.setCurrentItem(child(0, 0));
  fill({{Molecule, "a"}, {Molecule, "a"}});
  EXPECT_EQ(tree.currentItem(), child(0, 1));
}

TEST_F(PlotSelectorTest, ACurrentGroupIsNotRestoredAsAnItem)
{
  prepare({{Molecule, "a"}});
  tree.setCurrentItem(tree.topLevelItem(0));
  fill({{Unnamed, "Molecule"}, {Molecule, "a"}});
  EXPECT_EQ(tree.currentItem(), nullptr);
}

TEST_F(PlotSelectorTest, WithoutACurrentItemNoneBecomesCurrent)
{
  prepare({{Unnamed, ""}});
  ASSERT_EQ(tree.currentItem(), nullptr);
  fill({{Unnamed, ""}});
  EXPECT_EQ(tree.currentItem(), nullptr);
}

TEST_F(PlotSelectorTest, AnItemWithoutANameInAGroupWithoutATitleIsRestored)
{
  prepare({{Unnamed, ""}});
  tree.setCurrentItem(child(0, 0));
  fill({{Unnamed, ""}});
  EXPECT_EQ(tree.currentItem(), child(0, 0));
}

TEST_F(PlotSelectorTest, SelectionsAreAnnouncedAfterARefillToo)
{
  for (int refill = 0; refill < 3; ++refill) prepare({{Molecule, "a"}, {Molecule, "b"}});
  child(0, 1)->setSelected(true);
  EXPECT_THAT(announced, ElementsAre(Items{{Molecule, "b"}}));
  child(0, 1)->setSelected(false);
  EXPECT_THAT(announced, SizeIs(2));
  EXPECT_THAT(announced.back(), IsEmpty());
}

TEST_F(PlotSelectorTest, ThePresentSelectionCanBeAnnouncedAtAnyTime)
{
  prepare({{Molecule, "a"}});
  child(0, 0)->setSelected(true);
  announced.clear();
  tree.processNewSelection();
  EXPECT_THAT(announced, ElementsAre(Items{{Molecule, "a"}}));
}

TEST_F(PlotSelectorTest, MultipleSelectionsCanBeForbiddenAndAllowed)
{
  tree.setMultipleSelections(false);
  EXPECT_EQ(tree.selectionMode(), QAbstractItemView::SingleSelection);
  tree.setMultipleSelections(true);
  EXPECT_EQ(tree.selectionMode(), QAbstractItemView::MultiSelection);
}

TEST_F(PlotSelectorTest, ThePreferredSizeFollowsTheFont)
{
  for (int points : {8, 20}) {
    QFont font = tree.font();
    font.setPointSize(points);
    tree.setFont(font);
    QFontMetrics const metrics(tree.font());
    QSize const expected(15 * metrics.horizontalAdvance('m'), 20 * metrics.lineSpacing());
    EXPECT_EQ(tree.sizeHint(), expected) << points;
  }
}

} // namespace
} // namespace runsieve::test
