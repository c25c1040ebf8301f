#pragma once

#include <runsieve/widgets/PlotSelector.h>

#include <gtest/gtest.h>

#include <QTest>

#include <string>
#include <utility>
#include <vector>

namespace runsieve::test {

using Item = Kestrane::TypedConcentrationName;
using Items = std::vector<Item>;

/// A tree of items and the announcements that it makes.
struct SelectorTree : testing::Test
{
  PlotSelector tree;
  std::vector<Items> announced;

  SelectorTree()
  {
    QObject::connect(&tree, &PlotSelector::notifySelectionChanged,
                     [this](std::vector<Item>* items) { announced.push_back(*items); });
  }

  void fill(Items options) { tree.setSelectionOptions(options); }

  /// Fills and forgets what that announced.
  void prepare(Items options)
  {
    fill(std::move(options));
    announced.clear();
  }

  QTreeWidgetItem* child(int group, int number) { return tree.topLevelItem(group)->child(number); }

  /// The tree as lines "group/item".
  std::vector<std::string> content()
  {
    std::vector<std::string> lines;
    for (int g = 0; g < tree.topLevelItemCount(); ++g)
      for (int i = 0; i < tree.topLevelItem(g)->childCount(); ++i)
        lines.push_back(
            (tree.topLevelItem(g)->text(0) + "/" + child(g, i)->text(0)).toLatin1().toStdString());
    return lines;
  }

  void show()
  {
    tree.resize(300, 400);
    tree.expandAll();
    tree.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tree));
  }

  void click(QTreeWidgetItem* item, Qt::KeyboardModifiers keys = Qt::NoModifier)
  {
    tree.scrollToItem(item);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, keys, tree.visualItemRect(item).center());
  }
};

} // namespace runsieve::test
