#include "GalleryWindow.h"

#include "pages/Pages.h"

#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <vtkContextView.h>

#include <QListWidget>

namespace gallery {

GalleryWindow::GalleryWindow(Page const* first)
{
  setWindowTitle("Runsieve gallery");
  list = new QListWidget(this);
  widget = new VtkPlotWidget(this);
  setStretchFactor(1, 1);
  int start = 0;
  for (Page const& page : allPages()) {
    if (&page == first) start = list->count();
    list->addItem(QString::fromStdString(page.title));
  }
  connect(list, &QListWidget::currentRowChanged, this,
          [this](int row) { showInWidget(allPages()[static_cast<std::size_t>(row)]); });
  list->setCurrentRow(start);
  list->setMinimumWidth(list->sizeHintForColumn(0) + 30);
}

GalleryWindow::~GalleryWindow()
{
  // The widget goes first: it takes the chart of the plot out of its scene.
  delete widget;
}

void GalleryWindow::showInWidget(Page const& page)
{
  auto next = std::make_unique<PlotContainer>(nullptr);
  // Before the page is filled: the widget redraws, and some charts cannot be redrawn.
  widget->setPlotContainer(next.get());
  showPage(page, *next, widget->view->GetScene(), 1.0);
  widget->updatePlot(true);
  plot = std::move(next);
}

} // namespace gallery
