#include "app/desk/QtDesk.h"

#include <gtest/gtest.h>

namespace runsieve::test {
namespace {

/// All tests of this program use the desk that is linked to them; the program itself loads it.
class DeskOfTests : public testing::Environment
{
public:
  void SetUp() override { app::useDesk(desk); }

private:
  app::QtDesk desk;
};

// Owned by the tests.
testing::Environment* const environment = testing::AddGlobalTestEnvironment(new DeskOfTests);

TEST(Desk, TheOneInUseIsGiven)
{
  ASSERT_NE(environment, nullptr);
  EXPECT_NE(dynamic_cast<app::QtDesk*>(&app::desk()), nullptr);
}

} // namespace
} // namespace runsieve::test
