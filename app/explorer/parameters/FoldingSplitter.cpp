#include "app/explorer/parameters/FoldingSplitter.h"

#include <QResizeEvent>

namespace runsieve::app {

namespace {

constexpr int roomForTwo = 560; ///< pixels

} // namespace

FoldingSplitter::FoldingSplitter(QWidget* parent) : QSplitter(Qt::Horizontal, parent)
{
  setChildrenCollapsible(false);
}

void FoldingSplitter::resizeEvent(QResizeEvent* event)
{
  const Qt::Orientation wanted = event->size().width() < roomForTwo ? Qt::Vertical : Qt::Horizontal;
  if (wanted != orientation()) setOrientation(wanted);
  QSplitter::resizeEvent(event);
}

} // namespace runsieve::app
