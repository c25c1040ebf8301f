#include "app/explorer/window/FigureOf.h"

#include "app/explorer/document/Document.h"
#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/runs/RunsZoom.h"

namespace runsieve::app {

FigureContent figureOf(Document const& document, RunsZoom const& zoom)
{
  std::map<std::size_t, AxisMap> values;
  for (std::size_t const output : document.state().view.outputs) values[output] = zoom.value(output);
  return figureContentOf(document, zoom.time(), std::move(values));
}

void exportFigure(Document& document, RunsZoom const& zoom, QWidget* parent)
{
  document.cancelPreview(); // a gate under the hand is given up when the dialog opens
  ExportDialog dialog(figureOf(document, zoom), document.state().view, parent);
  dialog.setSource(document.source());
  dialog.exec();
}

} // namespace runsieve::app
