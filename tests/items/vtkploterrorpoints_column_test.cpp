#include "support/OpenErrorPoints.h"
#include "support/RecordingDevice.h"

#include <gmock/gmock.h>
#include <vtkStringArray.h>
#include <vtkTable.h>
#include <vtkWeakPointer.h>

#include <sstream>

namespace runsieve::test {
namespace {

/// Which column a plot takes its errors from. Columns: 0 "x", 1 "y", 2 "error", 3 "other", 4 "name" of texts.
struct ErrorColumnTest : testing::Test
{
  vtkSmartPointer<vtkFloatArray> error = makeFloats("error", {1, 2});
  vtkSmartPointer<vtkFloatArray> other = makeFloats("other", {3, 4});
  vtkSmartPointer<vtkTable> table = makeTable({{"x", {1, 2}}, {"y", {3, 4}}});
  vtkNew<OpenErrorPoints> plot;

  ErrorColumnTest()
  {
    table->AddColumn(error);
    table->AddColumn(other);
    table->AddColumn(makeColumn<vtkStringArray, std::string>("name", {"a", "b"}));
    plot->SetInputData(table, "x", "y");
  }

  /// Whether choosing by a name or a number marks the plot as modified.
  template <class Key> bool modifies(Key key)
  {
    vtkMTimeType const before = plot->GetMTime();
    plot->SelectErrorArray(key);
    return plot->GetMTime() > before;
  }
  bool modifies(char const* name) { return modifies(vtkStdString(name)); }
  bool modifies(int column) { return modifies(static_cast<vtkIdType>(column)); }
};

TEST_F(ErrorColumnTest, ANewPlotHasNone)
{
  EXPECT_EQ(plot->GetErrorArrayName(), "");
  EXPECT_EQ(plot->errors(), nullptr);
}

TEST_F(ErrorColumnTest, IsChosenByName)
{
  EXPECT_TRUE(modifies("error"));
  EXPECT_EQ(plot->GetErrorArrayName(), "error");
  EXPECT_EQ(plot->errors(), nullptr) << "looked up at the update";
  plot->Update();
  EXPECT_EQ(plot->errors(), error);
}

TEST_F(ErrorColumnTest, IsChosenByNumber)
{
  EXPECT_TRUE(modifies(3));
  EXPECT_EQ(plot->GetErrorArrayName(), "other");
  plot->Update();
  EXPECT_EQ(plot->errors(), other);
}

TEST_F(ErrorColumnTest, ChoosingItAgainChangesNothing)
{
  plot->SelectErrorArray("error");
  EXPECT_FALSE(modifies("error"));
  EXPECT_FALSE(modifies(2));
}

TEST_F(ErrorColumnTest, TheNameInUseIsNotLookedForAgain)
{
  plot->SelectErrorArray("error");
  table->RemoveColumnByName("error");
  EXPECT_FALSE(modifies("error"));
  EXPECT_EQ(plot->GetErrorArrayName(), "error");
}

TEST_F(ErrorColumnTest, AnUnknownNameChoosesNoneButLeavesTheColumnInUse)
{
  plot->SelectErrorArray("error");
  plot->Update();
  EXPECT_TRUE(modifies("unknown"));
  EXPECT_EQ(plot->GetErrorArrayName(), "");
  plot->Update();
  EXPECT_EQ(plot->errors(), error);
  plot->SelectErrorArray("other");
  plot->Update();
  EXPECT_EQ(plot->errors(), other) << "until it is replaced";
}

TEST_F(ErrorColumnTest, NoNameOnTopOfNoNameChangesNothing)
{
  EXPECT_FALSE(modifies(""));
}

TEST_F(ErrorColumnTest, ANumberOutsideTheTableChangesNothing)
{
  plot->SelectErrorArray("error");
  for (int column : {5, 999, -1}) EXPECT_FALSE(modifies(column)) << column;
  EXPECT_EQ(plot->GetErrorArrayName(), "error");
}

TEST_F(ErrorColumnTest, TheNumberOfAColumnOfTextsChangesNothing)
{
  EXPECT_FALSE(modifies(4));
  EXPECT_EQ(plot->GetErrorArrayName(), "");
}

TEST_F(ErrorColumnTest, TheNumberOfAColumnWithoutANameChangesNothing)
{
  vtkNew<vtkFloatArray> nameless;
  nameless->SetNumberOfTuples(2);
  table->AddColumn(nameless);
  nameless->SetName(nullptr);
  EXPECT_FALSE(modifies(5));
  EXPECT_EQ(plot->GetErrorArrayName(), "");
}

TEST_F(ErrorColumnTest, AColumnOfAnotherTypeCanBeNamedButGivesNoErrors)
{
  for (char const* name : {"y", "name"}) {
    plot->SelectErrorArray("error");
    plot->Update();
    ASSERT_EQ(plot->errors(), error);
    EXPECT_TRUE(modifies(name));
    EXPECT_EQ(plot->GetErrorArrayName(), name);
    plot->Update();
    EXPECT_EQ(plot->errors(), nullptr) << name;
  }
}

TEST_F(ErrorColumnTest, NothingCanBeChosenWithoutATable)
{
  vtkNew<OpenErrorPoints> bare;
  vtkMTimeType const before = bare->GetMTime();
  bare->SelectErrorArray("error");
  bare->SelectErrorArray(2);
  bare->Update();
  EXPECT_EQ(bare->GetErrorArrayName(), "");
  EXPECT_EQ(bare->GetMTime(), before);
  EXPECT_EQ(bare->errors(), nullptr);
}

TEST_F(ErrorColumnTest, IsLookedUpAnewAtEachUpdate)
{
  plot->SelectErrorArray("error");
  plot->Update();
  table->RemoveColumnByName("error");
  plot->Update();
  EXPECT_EQ(plot->errors(), nullptr);
  auto replacement = makeFloats("error", {5, 6});
  table->AddColumn(replacement);
  plot->Update();
  EXPECT_EQ(plot->errors(), replacement);
}

TEST_F(ErrorColumnTest, IsNotLookedUpWhileInvisible)
{
  plot->SelectErrorArray("error");
  plot->SetVisible(false);
  plot->Update();
  EXPECT_EQ(plot->errors(), nullptr);
}

TEST_F(ErrorColumnTest, CanBeLookedUpInAnotherTable)
{
  auto elsewhere = makeFloats("error", {5, 6});
  vtkNew<vtkTable> second;
  second->AddColumn(elsewhere);
  EXPECT_TRUE(plot->UpdateErrorCache(second)) << "nothing chosen";
  EXPECT_EQ(plot->errors(), nullptr);
  plot->SelectErrorArray("error");
  EXPECT_TRUE(plot->UpdateErrorCache(second));
  EXPECT_EQ(plot->errors(), elsewhere);
  vtkNew<vtkTable> without;
  EXPECT_TRUE(plot->UpdateErrorCache(without)) << "nothing found";
  EXPECT_EQ(plot->errors(), nullptr);
}

/// What a plot that nobody balances does to the reference count of its column.
struct ErrorReferenceTest : ErrorColumnTest
{
  vtkPlotErrorPoints* plain = vtkPlotErrorPoints::New(); // deleted by each test

  ErrorReferenceTest() { plain->SetInputData(table, "x", "y"); }
};

TEST_F(ErrorReferenceTest, LookingUpTakesNone)
{
  plain->SelectErrorArray("error");
  int const before = error->GetReferenceCount();
  for (int i = 0; i < 10; ++i) {
    plain->Modified();
    plain->Update();
  }
  EXPECT_EQ(error->GetReferenceCount(), before);
  error->Register(nullptr);
  plain->Delete();
}

TEST_F(ErrorReferenceTest, TheEndOfThePlotGivesOneUp)
{
  plain->SelectErrorArray("error");
  plain->Update();
  int const before = error->GetReferenceCount();
  error->Register(nullptr);
  plain->Delete();
  EXPECT_EQ(error->GetReferenceCount(), before);
}

TEST_F(ErrorReferenceTest, OnlyTheColumnInUseAtTheEndLosesOne)
{
  plain->SelectErrorArray("error");
  plain->Update();
  plain->SelectErrorArray("other");
  plain->Update();
  int const former = error->GetReferenceCount();
  int const inUse = other->GetReferenceCount();
  other->Register(nullptr);
  plain->Delete();
  EXPECT_EQ(error->GetReferenceCount(), former);
  EXPECT_EQ(other->GetReferenceCount(), inUse);
}

TEST_F(ErrorReferenceTest, AColumnThatStaysInUseWithoutANameLosesOne)
{
  plain->SelectErrorArray("error");
  plain->Update();
  plain->SelectErrorArray("unknown");
  plain->Update();
  int const before = error->GetReferenceCount();
  error->Register(nullptr);
  plain->Delete();
  EXPECT_EQ(error->GetReferenceCount(), before);
}

TEST_F(ErrorReferenceTest, AColumnNeverLookedUpLosesNone)
{
  plain->SelectErrorArray("error");
  int const before = error->GetReferenceCount();
  plain->Delete();
  EXPECT_EQ(error->GetReferenceCount(), before);
}

TEST_F(ErrorReferenceTest, AColumnOfAnotherTypeLosesNone)
{
  vtkAbstractArray* doubles = table->GetColumnByName("y");
  plain->SelectErrorArray("y");
  plain->Update();
  int const before = doubles->GetReferenceCount();
  plain->Delete();
  EXPECT_EQ(doubles->GetReferenceCount(), before);
}

TEST_F(ErrorReferenceTest, NothingIsGivenUpForAColumnThatDiedBefore)
{
  plain->SelectErrorArray("error");
  plain->Update();
  vtkWeakPointer<vtkFloatArray> watched = error.Get();
  table->RemoveColumnByName("error");
  error = nullptr;
  ASSERT_EQ(watched, nullptr);
  auto namesake = makeFloats("error", {5, 6});
  table->AddColumn(namesake);
  int const before = namesake->GetReferenceCount();
  plain->Delete();
  EXPECT_EQ(namesake->GetReferenceCount(), before);
}

TEST(ErrorPoints, KnowTheirClass)
{
  vtkNew<vtkPlotErrorPoints> plot;
  EXPECT_STREQ(plot->GetClassName(), "vtkPlotErrorPoints");
  EXPECT_TRUE(plot->IsA("vtkPlotPoints"));
  EXPECT_FALSE(plot->IsA("vtkPlotLine"));
  auto another = vtkSmartPointer<vtkPlotErrorPoints>::Take(plot->NewInstance());
  EXPECT_STREQ(another->GetClassName(), "vtkPlotErrorPoints");
}

TEST(ErrorPoints, PrintWhatPointsPrint)
{
  vtkNew<vtkPlotErrorPoints> plot;
  std::ostringstream own;
  std::ostringstream base;
  plot->PrintSelf(own, vtkIndent());
  plot->vtkPlotPoints::PrintSelf(base, vtkIndent());
  EXPECT_EQ(own.str(), base.str());
}

} // namespace
} // namespace runsieve::test
