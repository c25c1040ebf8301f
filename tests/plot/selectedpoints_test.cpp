#include "support/RecordingDevice.h"
#include "support/ShownPlot.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace runsieve::test {
namespace {

TEST_F(ShownPlot, SelectedPointsAreMarkedWhereTheyHaveMovedTo)
{
  RecordingPainter recorder;
  points()->SetSelection(makeIds({2, 0}));
  for (float b : {100.0f, 60.0f}) {
    container().plotData->SetValue(2, 1, b);
    container().plotData->GetColumn(1)->Modified();
    points()->Update();
    points()->Paint(recorder.painter);
    EXPECT_THAT(recorder.markers().back().points, ElementsAre(Point(3, b), Point(1, 2)));
  }
}

} // namespace
} // namespace runsieve::test
