// Every chart style and every adapter of the library on a page of its own: in a window, or as pictures.
#include "Arguments.h"
#include "GalleryWindow.h"
#include "pages/Pages.h"
#include "Pictures.h"

#include <QApplication>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace {

constexpr int workFailed = 1;
constexpr int badUsage = 2;

void printPages()
{
  int number = 0;
  for (gallery::Page const& page : gallery::allPages())
    std::cout << ++number << '\t' << page.name << '\t' << page.title << '\n';
}

/// Qt ends the program with a signal if it finds no display.
void requireDisplay()
{
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    if (const char* value = std::getenv(name); value && *value) return;
  throw std::runtime_error("there is no display to open a window on; --pictures needs none");
}

int openWindow(gallery::Page const* first, int argc, char** argv)
{
  requireDisplay();
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication application(argc, argv);
  gallery::GalleryWindow window(first);
  window.resize(1200, 700);
  window.show();
  return QApplication::exec();
}

int run(gallery::Arguments const& arguments, int argc, char** argv)
{
  if (arguments.help)
    std::cout << gallery::helpText;
  else if (arguments.list)
    printPages();
  else if (!arguments.pictures.empty())
    gallery::writePictures(arguments);
  else
    return openWindow(arguments.page, argc, argv);
  return 0;
}

} // namespace

int main(int argc, char** argv)
{
  try {
    return run(gallery::parseArguments({argv + 1, argv + argc}), argc, argv);
  } catch (gallery::UsageError const& error) {
    std::cerr << "gallery: " << error.what() << '\n';
    return badUsage;
  } catch (std::exception const& error) {
    std::cerr << "gallery: " << error.what() << '\n';
    return workFailed;
  }
}
