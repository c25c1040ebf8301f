#include "app/desk/OffscreenApplication.h"

namespace runsieve::app {

std::unique_ptr<QGuiApplication> offscreenApplication()
{
  if (QCoreApplication::instance()) return nullptr;
  static int argc = 3;
  static char name[] = "runsieve";
  static char option[] = "-platform";
  static char platform[] = "offscreen";
  static char* argv[] = {name, option, platform, nullptr};
  QtMessageHandler const usual =
      qInstallMessageHandler([](QtMsgType, QMessageLogContext const&, QString const&) {});
  auto application = std::make_unique<QGuiApplication>(argc, argv);
  qInstallMessageHandler(usual);
  return application;
}

} // namespace runsieve::app
