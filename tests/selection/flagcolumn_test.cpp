#include "support/Selections.h"

#include <runsieve/selection/vtkCombinedFilterAndSelectedRows.h>

#include <vtkDoubleArray.h>
#include <vtkNew.h>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

/// Three runs of two times, sieved again and again.
struct FlagColumnTest : testing::Test
{
  vtkSmartPointer<vtkTable> table = makeTable({{"time", {0, 1, 0, 1, 0, 1}}});

  void select(Rows const& rows)
  {
    auto filter =
        vtkSmartPointer<vtkCombinedFilterAndSelectedRows>::Take(vtkCombinedFilterAndSelectedRows::New());
    filter->SetParaCount(1);
    filter->SetTimeColumnIndex(0);
    filter->SetStride(2);
    filter->SetInputData(0, table);
    filter->SetInputData(1, selectionOf(rows));
    filter->Update();
  }

  vtkAbstractArray* remainder() { return table->GetColumnByName("vtkRemainderSelection"); }
};

TEST_F(FlagColumnTest, LaterSelectionsLeaveNothingOfTheFormerOne)
{
  select({0, 2, 1});
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(1, 1, 0, 0, 0, 0));
  EXPECT_THAT(numbers(table, "vtkReducedSelection"), ElementsAre(0, 0, 1, 0, 0, 0));
  EXPECT_THAT(numbers(table, "vtkComplementSelection"), ElementsAre(0, 0, 0, 1, 1, 1));
  select({4});
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(0, 0, 0, 0, 1, 0));
  EXPECT_THAT(numbers(table, "vtkReducedSelection"), ElementsAre(0, 0, 0, 0, 0, 0));
  EXPECT_THAT(numbers(table, "vtkComplementSelection"), ElementsAre(1, 0, 1, 0, 0, 0));
}

TEST_F(FlagColumnTest, WhoeverHoldsAColumnKeepsItsFlags)
{
  select({0});
  vtkNew<vtkTable> kept;
  kept->ShallowCopy(table);
  select({2});
  EXPECT_THAT(numbers(kept, "vtkRemainderSelection"), ElementsAre(1, 0, 0, 0, 0, 0));
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(0, 0, 1, 0, 0, 0));
}

TEST_F(FlagColumnTest, AColumnThatAHostHasWrittenToIsWrittenWhole)
{
  select({0});
  auto* flags = vtkIdTypeArray::SafeDownCast(remainder());
  flags->SetValue(5, 1);
  flags->Modified();
  select({2});
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(0, 0, 1, 0, 0, 0));
}

TEST_F(FlagColumnTest, AValueThatAHostHasWrittenWithoutAWordDoesNotSurviveTheNextSelection)
{
  select({0});
  vtkIdTypeArray::SafeDownCast(remainder())->SetValue(5, 7);
  select({2});
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(0, 0, 1, 0, 0, 0));
}

TEST_F(FlagColumnTest, TheStorageServesTheNextSelectionAgain)
{
  select({0});
  void* const storage = remainder()->GetVoidPointer(0);
  select({2});
  EXPECT_EQ(remainder()->GetVoidPointer(0), storage);
}

TEST_F(FlagColumnTest, ALongerTableGetsLongerColumns)
{
  select({0});
  for (const char* name : {"vtkComplementSelection", "vtkReducedSelection", "vtkRemainderSelection"})
    table->RemoveColumnByName(name);
  for (double time : {0.0, 1.0}) vtkDoubleArray::SafeDownCast(table->GetColumn(0))->InsertNextValue(time);
  select({6});
  EXPECT_THAT(numbers(table, "vtkRemainderSelection"), ElementsAre(0, 0, 0, 0, 0, 0, 1, 0));
}

} // namespace
} // namespace runsieve::test
