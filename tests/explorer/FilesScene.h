#pragma once

#include "Dialogs.h"
#include "WindowScene.h"

#include <QDir>

#include <string>

namespace runsieve::test {

/// The explorer's window, for what it does with files.
struct FilesScene : WindowScene
{
  void drawGate() { Mouse(view()).drag(at(2.0, 0.5), at(4.0, 0.9)); }
  /// Of the window, without the folder.
  [[nodiscard]] std::string title() const
  {
    return window->windowTitle().remove(QString(" (%1)").arg(QDir(folder.path()).dirName())).toStdString();
  }
  void keepSomething()
  {
    document().change("Gate", [](app::State& state) { state.gates = {{"Gate 1", gateOnA(0.2, 0.9), true}}; });
  }
};

} // namespace runsieve::test
