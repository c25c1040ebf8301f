#include <runsieve/core/kernels/RunParts.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace runsieve {

inline bool operator==(RunPart a, RunPart b)
{
  return a.run == b.run && a.first == b.first && a.count == b.count;
}

} // namespace runsieve

namespace runsieve::test {
namespace {

std::vector<RunPart> partsOf(std::vector<long long> const& rows, long long stride)
{
  RowSpans spans;
  for (long long row : rows) spans.append(row);
  return runParts(spans, stride);
}

TEST(RunPartsTest, RowsAreSplitWhereRunsEnd)
{
  EXPECT_THAT(partsOf({0, 1, 2, 3, 4, 5, 6}, 3),
              ElementsAreArray({RunPart{0, 0, 3}, RunPart{1, 0, 3}, RunPart{2, 0, 1}}));
  EXPECT_THAT(partsOf({2, 3, 8}, 3),
              ElementsAreArray({RunPart{0, 2, 1}, RunPart{1, 0, 1}, RunPart{2, 2, 1}}));
  EXPECT_THAT(partsOf({0, 2, 11, 12}, 3),
              ElementsAreArray({RunPart{0, 0, 1}, RunPart{0, 2, 1}, RunPart{3, 2, 1}, RunPart{4, 0, 1}}));
}

TEST(RunPartsTest, ARunIsMarkedIfAnyOfItsRowsIsThere)
{
  EXPECT_THAT(runsOf(partsOf({0, 2, 11, 12}, 3), 6), ElementsAre(1, 0, 0, 1, 1, 0));
  EXPECT_THAT(runsOf({}, 2), ElementsAre(0, 0));
}

} // namespace
} // namespace runsieve::test
