#include <runsieve/core/kernels/ParameterOrder.h>

#include <gmock/gmock.h>

#include <vector>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

TEST(ParameterOrderTest, EachRunCountsByItsFirstRow)
{
  const std::vector<double> column = {4, 4, 2, 2, 4, 4, 1};
  const RunValues runs(column.data(), static_cast<long long>(column.size()), 2);
  EXPECT_THAT(ParameterOrder(runs).sorted(), ElementsAre(1, 2, 4, 4));
}

} // namespace
} // namespace runsieve::test
