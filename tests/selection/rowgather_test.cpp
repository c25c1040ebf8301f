#include "support/TableBuilder.h"

#include <runsieve/core/kernels/RowSpans.h>
#include <runsieve/selection/FlagColumn.h>
#include <runsieve/selection/RowGather.h>
#include <runsieve/selection/RunIndex.h>

#include <gmock/gmock.h>
#include <vtkBitArray.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkStringArray.h>
#include <vtkUnsignedCharArray.h>
#include <vtkVariant.h>

#include <random>
#include <thread>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

/// Stacked runs with columns of all kinds, of which the last run may be short.
class StackedTable
{
public:
  StackedTable(unsigned seed, long long itsStride, vtkIdType rows) : random(seed), stride(itsStride)
  {
    table = makeTable({{"output", anyNumbers(rows)},
                       {"time", fromRow(rows, [this](vtkIdType row) { return 0.5 * (row % stride); })},
                       {"run", fromRow(rows, [this](vtkIdType row) { return row / stride; })},
                       {"k1", perRun(rows)},
                       {"k2", perRun(rows)},
                       {"almost constant", perRun(rows)}});
    if (rows > 1 && stride > 1) column("almost constant")->SetValue(1, -77.0);
    addNumbers<vtkFloatArray>("float", 1, rows);
    addNumbers<vtkIntArray>("int", 1, rows);
    addNumbers<vtkUnsignedCharArray>("byte", 1, rows);
    addNumbers<vtkIdTypeArray>("flag", 1, rows);
    addNumbers<vtkBitArray>("bit", 1, rows);
    addNumbers<vtkDoubleArray>("vector", 3, rows);
    vtkNew<vtkStringArray> texts;
    texts->SetName("text");
    for (vtkIdType row = 0; row < rows; ++row) texts->InsertNextValue("row " + std::to_string(row));
    table->AddColumn(texts);
  }

  vtkDoubleArray* column(const char* name) const
  {
    return vtkDoubleArray::SafeDownCast(table->GetColumnByName(name));
  }

  RowSpans someRows(unsigned density)
  {
    RowSpans rows;
    for (vtkIdType row = 0; row < table->GetNumberOfRows(); ++row)
      if (random() % 4 < density) rows.append(row);
    return rows;
  }

  StackedRuns known(RunIndex& index) const { return {&index, stride, column("time")}; }

  vtkSmartPointer<vtkTable> table;
  std::mt19937 random;
  long long stride;

private:
  template <class Value> static std::vector<double> fromRow(vtkIdType rows, Value const& value)
  {
    std::vector<double> values;
    for (vtkIdType row = 0; row < rows; ++row) values.push_back(static_cast<double>(value(row)));
    return values;
  }

  std::vector<double> anyNumbers(vtkIdType rows)
  {
    return fromRow(rows, [this](vtkIdType) { return random() % 1000 / 7.0; });
  }

  std::vector<double> perRun(vtkIdType rows)
  {
    const std::vector<double> runs = anyNumbers(rows / stride + 1);
    return fromRow(rows, [&](vtkIdType row) { return runs[static_cast<std::size_t>(row / stride)]; });
  }

  template <class Array> void addNumbers(const char* name, int components, vtkIdType rows)
  {
    vtkNew<Array> array;
    array->SetName(name);
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(rows);
    for (vtkIdType row = 0; row < rows; ++row)
      for (int c = 0; c < components; ++c) array->SetComponent(row, c, random() % 2);
    table->AddColumn(array);
  }
};

/// Row by row and value by value.
vtkSmartPointer<vtkTable> naiveCopy(vtkTable* from, RowSpans const& rows)
{
  std::vector<long long> list(static_cast<std::size_t>(rows.rowCount()));
  rows.expand(list.data());
  auto copy = vtkSmartPointer<vtkTable>::New();
  for (vtkIdType c = 0; c < from->GetNumberOfColumns(); ++c) {
    auto column = vtkSmartPointer<vtkAbstractArray>::Take(from->GetColumn(c)->NewInstance());
    column->SetName(from->GetColumnName(c));
    column->SetNumberOfComponents(from->GetColumn(c)->GetNumberOfComponents());
    for (long long row : list) column->InsertNextTuple(row, from->GetColumn(c));
    copy->AddColumn(column);
  }
  return copy;
}

void expectSame(vtkTable* found, vtkTable* wanted)
{
  ASSERT_EQ(found->GetNumberOfColumns(), wanted->GetNumberOfColumns());
  for (vtkIdType c = 0; c < wanted->GetNumberOfColumns(); ++c) {
    vtkAbstractArray* const a = found->GetColumn(c);
    vtkAbstractArray* const b = wanted->GetColumn(c);
    ASSERT_STREQ(a->GetName(), b->GetName());
    ASSERT_STREQ(a->GetClassName(), b->GetClassName()) << b->GetName();
    ASSERT_EQ(a->GetNumberOfComponents(), b->GetNumberOfComponents()) << b->GetName();
    ASSERT_EQ(a->GetNumberOfTuples(), b->GetNumberOfTuples()) << b->GetName();
    for (vtkIdType i = 0; i < b->GetNumberOfValues(); ++i)
      ASSERT_EQ(a->GetVariantValue(i), b->GetVariantValue(i)) << b->GetName() << ", value " << i;
  }
}

void inThreads(std::size_t count, std::function<void(std::size_t)> const& work)
{
  std::vector<std::thread> threads;
  for (std::size_t block = 0; block < count; ++block) threads.emplace_back(work, block);
  for (std::thread& thread : threads) thread.join();
}

TEST(RowGatherTest, CopiesOfAnyRowsAreThoseMadeRowByRow)
{
  for (unsigned round = 0; round < 60; ++round) {
    const long long stride = 1 + round % 7;
    StackedTable stacked(round, stride, 1 + round * 3 % 50);
    const RowSpans rows[] = {stacked.someRows(round % 5), stacked.someRows(2)};
    for (bool known : {false, true})
      for (BlockRunner const& runner : {BlockRunner(), BlockRunner(inThreads)}) {
        RunIndex index;
        RowGather gather(stacked.table, known ? stacked.known(index) : StackedRuns());
        vtkNew<vtkTable> copies[2];
        for (int i = 0; i < 2; ++i) gather.add(rows[i], false, copies[i]);
        gather.run(runner);
        for (int i = 0; i < 2; ++i) {
          SCOPED_TRACE(testing::Message() << "round " << round << ", table " << i << ", known " << known);
          expectSame(copies[i], naiveCopy(stacked.table, rows[i]));
        }
      }
  }
}

TEST(RowGatherTest, RunsOfOtherTimesAreReadWithTheirOwn)
{
  StackedTable stacked(1, 4, 18);
  stacked.column("time")->SetValue(9, 99.0);
  RunIndex index;
  RowGather gather(stacked.table, stacked.known(index));
  const RowSpans rows = stacked.someRows(4);
  vtkNew<vtkTable> copy;
  gather.add(rows, false, copy);
  gather.run();
  expectSame(copy, naiveCopy(stacked.table, rows));
}

/// A column of an index is kept between copies and renewed when it says that it has changed.
TEST(RowGatherTest, AColumnThatHasChangedSinceTheLastCopyIsCopiedAsItIs)
{
  StackedTable stacked(2, 5, 23);
  RunIndex index;
  const auto copied = [&](RowSpans const& rows) {
    RowGather gather(stacked.table, stacked.known(index));
    auto copy = vtkSmartPointer<vtkTable>::New();
    gather.add(rows, false, copy);
    gather.run();
    return copy;
  };
  copied(stacked.someRows(2));
  const auto change = [&](const char* name, vtkIdType first, vtkIdType count, double value) {
    for (vtkIdType row = first; row < first + count; ++row) stacked.column(name)->SetValue(row, value);
    stacked.column(name)->Modified();
  };
  change("k1", 5, 5, -3.0); // still constant within the run
  change("k2", 7, 1, -4.0); // not any more
  change("time", 12, 1, -5.0);
  change("almost constant", 0, 5, 6.0); // now it is
  const RowSpans rows = stacked.someRows(3);
  expectSame(copied(rows), naiveCopy(stacked.table, rows));
}

TEST(RowGatherTest, FlagsOfTheFormerSelectionAreCopiedAsTheyAre)
{
  StackedTable stacked(4, 5, 48);
  RunIndex index;
  for (int round = 0; round < 20; ++round) {
    const RowSpans ones = stacked.someRows(static_cast<unsigned>(round % 5));
    FlagColumn::put(stacked.table, {{"ones", ones, true}}, {});
    if (round % 3 == 0) {
      auto* flags = vtkIdTypeArray::SafeDownCast(stacked.table->GetColumnByName("ones"));
      flags->SetValue(7, 9);
      flags->Modified();
    }
    const RowSpans rows = stacked.someRows(static_cast<unsigned>(round / 4));
    RowGather gather(stacked.table, stacked.known(index));
    vtkNew<vtkTable> copy;
    gather.add(rows, false, copy);
    gather.run();
    SCOPED_TRACE(round);
    expectSame(copy, naiveCopy(stacked.table, rows));
  }
}

TEST(RowGatherTest, AColumnThatReplacesAnotherIsCopied)
{
  StackedTable stacked(3, 3, 9);
  RunIndex index;
  const RowSpans rows = stacked.someRows(3);
  for (double value : {1.0, 2.0, 3.0}) {
    stacked.table->AddColumn(makeColumn("k1", std::vector<double>(9, value)));
    RowGather gather(stacked.table, stacked.known(index));
    vtkNew<vtkTable> copy;
    gather.add(rows, false, copy);
    gather.run();
    expectSame(copy, naiveCopy(stacked.table, rows));
  }
}

TEST(RowGatherTest, RowNumbersComeBehindAllColumns)
{
  RowSpans rows;
  for (long long row : {2, 0, 1}) rows.append(row);
  vtkNew<vtkTable> copy;
  gatherTable(makeTable({{"a", {5, 6, 7}}}), rows, true, copy);
  ASSERT_EQ(copy->GetNumberOfColumns(), 2);
  EXPECT_STREQ(copy->GetColumnName(1), "vtkOriginalRowIds");
  for (vtkIdType i = 0; i < 3; ++i) {
    EXPECT_EQ(copy->GetValue(i, 0).ToDouble(), 5.0 + copy->GetValue(i, 1).ToInt());
    EXPECT_EQ(copy->GetValue(i, 1).ToInt(), (std::vector<int>{2, 0, 1})[static_cast<std::size_t>(i)]);
  }
}

} // namespace
} // namespace runsieve::test
