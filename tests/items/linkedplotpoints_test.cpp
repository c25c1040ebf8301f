#include "support/DrawnLineSet.h"

#include <vtkIdTypeArray.h>
#include <vtkPoints2D.h>

#include <gmock/gmock.h>

namespace runsieve::test {
namespace {

/// A line set that tells when its points were made.
class Probe : public vtkPlotLineSet
{
public:
  static vtkSmartPointer<Probe> create()
  {
    auto* probe = new Probe;
    probe->InitializeObjectBase();
    return vtkSmartPointer<Probe>::Take(probe);
  }
  vtkMTimeType pointsTime() { return this->Points->GetMTime(); }
};

TEST(LinkedPlotPoints, KeepsItsPointsWhenOnlyTheSelectionChanges)
{
  auto table = makeTable({{"x", {0, 1, 2, 3}}, {"y", {5, 6, 7, 8}}});
  auto plot = Probe::create();
  plot->SetInputData(table, "x", "y");
  plot->Update();
  const vtkMTimeType made = plot->pointsTime();
  for (int i = 0; i < 10; ++i) {
    vtkNew<vtkIdTypeArray> selection;
    selection->InsertNextValue(i % 4);
    plot->SetSelection(selection); // marks the plot as modified, as a linked chart does at every update
    plot->Update();
  }
  EXPECT_EQ(plot->pointsTime(), made);
}

TEST(LinkedPlotPoints, MakesItsPointsAnewWhenAColumnIsModified)
{
  auto table = makeTable({{"x", {0, 1, 2, 3}}, {"y", {5, 6, 7, 8}}});
  auto plot = Probe::create();
  plot->SetInputData(table, "x", "y");
  plot->Update();
  for (vtkIdType column : {0, 1}) {
    const vtkMTimeType made = plot->pointsTime();
    table->GetColumn(column)->Modified();
    plot->Update();
    EXPECT_GT(plot->pointsTime(), made) << "column " << column;
  }
}

using LineCoats = DrawnLineSet;

TEST_F(LineCoats, ALineIsPaintedNoMoreOftenThanItCanGetDenser)
{
  setRows(60, 30);
  std::vector<vtkIdType> flags(60, 0);
  for (int row = 0; row < 30; ++row) flags[row] = 1;
  flags[45] = 1;
  setFlags(flags);
  draw();
  std::vector<int> expected(10, 0);
  expected.push_back(30);
  EXPECT_EQ(firstRows(true), expected);
}

} // namespace
} // namespace runsieve::test
