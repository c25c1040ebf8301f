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
  vtkMTimeType flagsTime() { return this->RemainderRows->GetMTime(); }
  vtkMTimeType linesTime() { return this->SelectedLines->GetMTime(); }
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

TEST(LinkedPlotPoints, MakesItsPointsAnewWhenAHostSaysThatItIsModified)
{
  auto table = makeTable({{"x", {0, 1}}, {"y", {5, 6}}});
  vtkNew<vtkPlotLineSet> plot;
  plot->SetOnlyShowSelected(0);
  plot->SetStride(2);
  plot->SetInputData(table, "x", "y");
  plot->Update();
  vtkDoubleArray::SafeDownCast(table->GetColumn(1))->GetPointer(0)[1] = 9; // raw: the column notices nothing
  plot->Modified();
  plot->Update();
  RecordingPainter recorder;
  plot->Paint(recorder.painter);
  ASSERT_EQ(recorder.polyLines().size(), 1u);
  EXPECT_EQ(recorder.polyLines()[0].points[1].second, 9.0f);
}

TEST(LinkedPlotPoints, MakesItsPointsAnewAtEachCallOfModified)
{
  auto table = makeTable({{"x", {0, 1}}, {"y", {5, 6}}});
  auto plot = Probe::create();
  plot->SetInputData(table, "x", "y");
  for (int i = 0; i < 3; ++i) {
    plot->Update();
    const vtkMTimeType made = plot->pointsTime();
    plot->Modified();
    plot->Update();
    EXPECT_GT(plot->pointsTime(), made) << i;
  }
}

/// The flags of a line set, which are copied and counted only when they change.
struct LineSetFlags : testing::Test
{
  vtkSmartPointer<vtkTable> table = makeTable({{"x", {0, 1, 2, 3}}, {"y", {5, 6, 7, 8}}});
  vtkSmartPointer<Probe> plot = Probe::create();
  RecordingPainter recorder;

  LineSetFlags()
  {
    table->AddColumn(makeColumn<vtkIdTypeArray>("vtkRemainderSelection", std::vector<vtkIdType>{1, 0, 0, 0}));
    plot->SetInputData(table, "x", "y");
    plot->SetStride(2);
    updateAndPaint();
  }

  void updateAndPaint()
  {
    plot->Update();
    plot->Paint(recorder.painter);
  }

  vtkIdTypeArray* flags()
  {
    return vtkIdTypeArray::SafeDownCast(table->GetColumnByName("vtkRemainderSelection"));
  }
};

TEST_F(LineSetFlags, AreNotCopiedAgainAtEachUpdate)
{
  const vtkMTimeType copied = plot->flagsTime();
  const vtkMTimeType listed = plot->linesTime();
  for (int i = 0; i < 5; ++i) {
    vtkNew<vtkIdTypeArray> selection; // as a linked chart does at every update
    plot->SetSelection(selection);
    plot->SetSelection(nullptr);
    updateAndPaint();
  }
  EXPECT_EQ(plot->flagsTime(), copied);
  EXPECT_EQ(plot->linesTime(), listed);
}

TEST_F(LineSetFlags, AreCopiedWhenTheColumnIsModifiedOrReplaced)
{
  flags()->SetValue(2, 1);
  flags()->Modified();
  const vtkMTimeType first = plot->flagsTime();
  updateAndPaint();
  EXPECT_GT(plot->flagsTime(), first);
  EXPECT_EQ(recorder.polyLines().size(), 1u + 2u);
  table->AddColumn(makeColumn<vtkIdTypeArray>("vtkRemainderSelection", std::vector<vtkIdType>{0, 0, 1, 0}));
  updateAndPaint();
  ASSERT_EQ(recorder.polyLines().size(), 1u + 2u + 1u);
  EXPECT_EQ(recorder.polyLines().back().points[0].first, 2.0f);
}

TEST_F(LineSetFlags, AreCopiedWhenAHostSaysThatThePlotIsModified)
{
  flags()->SetValue(2, 1);
  plot->Modified();
  updateAndPaint();
  EXPECT_EQ(recorder.polyLines().size(), 1u + 2u);
}

TEST_F(LineSetFlags, CountNothingOnceTheColumnIsGone)
{
  table->RemoveColumnByName("vtkRemainderSelection");
  updateAndPaint();
  EXPECT_EQ(recorder.polyLines().size(), 1u);
}

TEST_F(LineSetFlags, AnotherStrideLightsOtherLines)
{
  flags()->SetValue(0, 0);
  flags()->SetValue(3, 1);
  flags()->Modified();
  updateAndPaint();
  EXPECT_EQ(recorder.polyLines().back().points.front().first, 2.0f);
  plot->SetStride(4);
  updateAndPaint();
  EXPECT_EQ(recorder.polyLines().back().points.front().first, 0.0f);
  EXPECT_EQ(recorder.polyLines().back().points.size(), 4u);
}

TEST(LineSetSelection, AnotherStrideLightsOtherLines)
{
  auto table = makeTable({{"x", {0, 1, 2, 3}}, {"y", {5, 6, 7, 8}}});
  auto plot = Probe::create();
  plot->SetInputData(table, "x", "y");
  plot->SetStride(2);
  plot->SetSelection(makeIds({3}));
  RecordingPainter recorder;
  plot->Update();
  plot->Paint(recorder.painter);
  EXPECT_EQ(recorder.polyLines().back().points.front().first, 2.0f);
  plot->SetStride(4);
  plot->Paint(recorder.painter);
  EXPECT_EQ(recorder.polyLines().back().points.front().first, 0.0f);
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
