#pragma once

#include "DocumentScene.h"
#include "Mouse.h"
#include "TestSettings.h"

#include "app/explorer/runs/RunsPane.h"
#include "app/explorer/window/Actions.h"
#include "app/explorer/window/ExplorerWindow.h"

#include <runsieve/core/write/WriteScan.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QTemporaryDir>

#include <string>

namespace runsieve::test {

/// The explorer's window, with nothing open.
struct WindowScene : testing::Test
{
  QTemporaryDir folder;
  std::unique_ptr<app::ExplorerWindow> window;

  WindowScene()
  {
    useTestSettings();
    window = std::make_unique<app::ExplorerWindow>();
  }

  void SetUp() override
  {
    window->resize(1200, 850);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }

  [[nodiscard]] QString file(char const* name) const { return folder.filePath(name); }
  [[nodiscard]] app::Document& document() { return window->document(); }
  [[nodiscard]] bool settle()
  {
    return waitFor([this] { return window->isSettled(); });
  }
  /// Writes a scan of lines into a file and opens it. \return whether it is open
  [[nodiscard]] bool openLines(char const* name = "scan.csv", std::size_t runs = 40)
  {
    writeScan(*lineScan(runs), file(name).toStdString());
    window->open(file(name));
    return waitFor([this] { return !window->files().opening().isBusy() && document().isOpen(); }) && settle();
  }
  void trigger(char const* action) { window->actions().at(action)->trigger(); }
  [[nodiscard]] app::RunsView& view(std::size_t place = 0) { return *window->runs().view(place); }
  [[nodiscard]] QPointF at(double time, double value) { return view().frame().at(time, value); }
};

} // namespace runsieve::test
