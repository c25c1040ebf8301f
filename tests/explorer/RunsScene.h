#pragma once

#include "DocumentScene.h"

#include "app/explorer/runs/RunsPane.h"

#include <cstddef>

namespace runsieve::test {

/// The charts of the runs of a scan of lines in a window.
struct RunsScene : DocumentScene
{
  app::RunsPane pane{document};

  void SetUp() override
  {
    pane.resize(800, 600);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
    ASSERT_TRUE(settlePane());
  }

  [[nodiscard]] bool settlePane()
  {
    return waitFor([this] { return pane.isSettled() && document.isCompared(); });
  }
  [[nodiscard]] app::RunsView& view(std::size_t place = 0) { return *pane.view(place); }
  [[nodiscard]] QPointF at(double time, double value) { return view().frame().at(time, value); }
  [[nodiscard]] Gate const& gate(std::size_t i = 0) { return document.state().gates.at(i).gate; }
};

} // namespace runsieve::test
