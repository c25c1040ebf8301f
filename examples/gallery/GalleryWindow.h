#pragma once

#include "pages/Page.h"

#include <QSplitter>

#include <memory>

class PlotContainer;
class QListWidget;
class VtkPlotWidget;

namespace gallery {

/// The list of pages beside the chart of the chosen one.
class GalleryWindow : public QSplitter
{
public:
  /// \param first the page to show first; null: the first of the list
  explicit GalleryWindow(Page const* first);
  ~GalleryWindow() override;

private:
  void showInWidget(Page const& page);

  QListWidget* list;
  VtkPlotWidget* widget;
  std::unique_ptr<PlotContainer> plot;
};

} // namespace gallery
