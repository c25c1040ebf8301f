#include <gtest/gtest.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <locale>

// Widgets and charts need an application object; tests never show dialogs.
int main(int argc, char** argv)
{
  QSurfaceFormat format = QVTKOpenGLNativeWidget::defaultFormat();
  format.setSamples(0);
  QSurfaceFormat::setDefaultFormat(format);
  QApplication application(argc, argv);
  std::locale::global(std::locale::classic());
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
