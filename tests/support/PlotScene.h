#pragma once

#include "RecordingDevice.h"
#include "Selections.h"
#include "support/PlotParts.h"
#include "TableBuilder.h"

#include <vtkAxis.h>
#include <vtkContextMapper2D.h>
#include <vtkContextScene.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlot.h>

#include <string>
#include <vector>

namespace runsieve::test {

/// A container whose current item stands in a scene of 800 x 600 pixels, as in a widget, but without a
/// window.
struct PlotScene
{
  vtkNew<vtkContextScene> scene; // outlives the container
  PlotContainer container{nullptr};

  PlotScene()
  {
    scene->SetGeometry(800, 600);
    show();
  }

  [[nodiscard]] PlotMetaData& settings() { return *container.metaData; }
  [[nodiscard]] vtkChart* chart() { return container.chartXY; }
  [[nodiscard]] vtkAxis* bottom() { return chart()->GetAxis(vtkAxis::BOTTOM); }
  [[nodiscard]] vtkAxis* left() { return chart()->GetAxis(vtkAxis::LEFT); }

  /// Puts the current item into the scene as its only item.
  void show()
  {
    scene->ClearItems();
    scene->AddItem(container.getItem());
  }

  void paint(RecordingPainter& recorder) { scene->Paint(recorder.painter); }
};

inline void selectRows(PlotContainer& container, Rows const& rows)
{
  container.annotationLink->SetCurrentSelection(selectionOf(rows));
}

/// Name of the column that a plot draws along an axis (0 horizontal, 1 vertical); empty: none.
inline std::string drawnColumn(vtkPlot* plot, int axis)
{
  vtkTable* table = plot->GetInput();
  auto* column = table ? plot->GetData()->GetInputAbstractArrayToProcess(axis, table) : nullptr;
  return column && column->GetName() ? column->GetName() : "";
}

inline Color penColor(vtkPlot* plot)
{
  unsigned char rgba[4];
  plot->GetPen()->GetColor(rgba);
  return {rgba[0], rgba[1], rgba[2], plot->GetPen()->GetOpacity()};
}

} // namespace runsieve::test
