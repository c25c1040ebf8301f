#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QOpenGLWidget>

/// Whether less than a hundredth of a half of what the widget shows, upper or lower, differs from the
/// background.
inline bool isBlank(QOpenGLWidget& widget)
{
  QCoreApplication::processEvents();
  const QImage frame = widget.grabFramebuffer().convertToFormat(QImage::Format_RGB32);
  const QRgb background = frame.isNull() ? 0 : frame.pixel(0, 0);
  int drawn[2] = {0, 0};
  for (int y = 0; y < frame.height(); ++y)
    for (int x = 0; x < frame.width(); ++x)
      if (frame.pixel(x, y) != background) ++drawn[2 * y / frame.height()];
  const int enough = frame.width() * frame.height() / 200;
  return frame.isNull() || drawn[0] < enough || drawn[1] < enough;
}
