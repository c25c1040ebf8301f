#pragma once

#include "support/TableBuilder.h"

#include "app/render/OffscreenView.h"

#include <runsieve/items/MovedImages.h>
#include <runsieve/items/vtkPlotLineSet.h>

#include <vtkAxis.h>
#include <vtkChartXY.h>
#include <vtkContextScene.h>
#include <vtkContextView.h>
#include <vtkImageData.h>
#include <vtkPen.h>
#include <vtkRenderWindow.h>
#include <vtkUnsignedCharArray.h>
#include <vtkWindowToImageFilter.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace runsieve::test {

/// Lines of runs in a chart of fixed axes, off-screen. Line sets of fewer than 50 runs are polylines, larger
/// ones images.
struct LineScene : testing::Test
{
  static constexpr int times = 40;

  explicit LineScene(int width = 500, int height = 360, int samples = 8) : view(width, height, samples)
  {
    view.scene()->AddItem(chart);
    for (int side : {vtkAxis::BOTTOM, vtkAxis::LEFT}) chart->GetAxis(side)->SetBehavior(vtkAxis::FIXED);
    chart->GetAxis(vtkAxis::BOTTOM)->SetRange(0.0, times - 1.0);
    chart->GetAxis(vtkAxis::LEFT)->SetRange(-12.0, 12.0);
  }

  using Curve = std::function<double(int run, int time)>;

  /// Waves of heights and phases of their own.
  static double wave(int run, int time)
  {
    const double phase = 0.7 * run;
    return (1.0 + 9.0 * std::fmod(0.618034 * run, 1.0)) * std::sin(0.2 * time + phase);
  }

  /// \param runs first and one behind the last
  static vtkSmartPointer<vtkTable> tableOf(std::pair<int, int> runs, Curve const& curve = wave)
  {
    std::vector<double> x;
    std::vector<double> y;
    for (int run = runs.first; run < runs.second; ++run)
      for (int time = 0; time < times; ++time) {
        x.push_back(time);
        y.push_back(curve(run, time));
      }
    return makeTable({{"x", x}, {"y", y}});
  }

  /// Flags of all rows of some runs, or none.
  static void flag(vtkTable* table, std::function<int(int run)> const& rowsOfRun)
  {
    std::vector<vtkIdType> flags;
    for (int run = 0; run < table->GetNumberOfRows() / times; ++run)
      for (int time = 0; time < times; ++time) flags.push_back(time < rowsOfRun(run) ? 1 : 0);
    table->RemoveColumnByName("vtkRemainderSelection");
    table->AddColumn(makeColumn<vtkIdTypeArray>("vtkRemainderSelection", flags));
    table->Modified();
  }

  vtkPlotLineSet* add(vtkTable* table, bool onlySelected = false)
  {
    auto lines = vtkSmartPointer<vtkPlotLineSet>::Take(vtkPlotLineSet::New());
    lines->SetStride(times);
    lines->SetOnlyShowSelected(onlySelected);
    lines->SetInputData(table, "x", "y");
    lines->GetPen()->SetColor(60, 70, 90, 40);
    lines->GetPen()->SetWidth(1.01f);
    chart->AddPlot(lines);
    return lines;
  }

  QImage picture()
  {
    const std::string path = folder.filePath("picture.png").toStdString();
    view.render(); // the first one after a change of an axis lays the chart out
    view.save(path);
    return QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB888);
  }

  vtkRenderWindow* window() { return view.contextView()->GetRenderWindow(); }

  /// Moves the window on the vertical axis.
  void pan(double by)
  {
    vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
    left->SetRange(left->GetMinimum() + by, left->GetMaximum() + by);
  }

  /// The second of two frames that may show moved images; the first one after a change of an axis lays the
  /// chart out.
  QImage frameOf(MovedImages& images, MovedImages::Hand hand)
  {
    const MovedImages::Frame allowed(images, hand);
    view.render();
    view.render();
    return shown();
  }

  /// What the last frame showed; draws nothing.
  QImage shown()
  {
    vtkNew<vtkWindowToImageFilter> filter;
    filter->SetInput(window());
    filter->ShouldRerenderOff();
    filter->ReadFrontBufferOff();
    filter->SetInputBufferTypeToRGB();
    filter->Update();
    vtkImageData* pixels = filter->GetOutput();
    int const* size = pixels->GetDimensions();
    const QImage upsideDown(static_cast<uchar const*>(pixels->GetScalarPointer()), size[0], size[1],
                            3 * size[0], QImage::Format_RGB888);
    return upsideDown.mirrored();
  }

  /// Root of the mean square of the differences, of 255.
  static double rms(QImage const& a, QImage const& b)
  {
    EXPECT_EQ(a.size(), b.size());
    double sum = 0.0;
    for (int y = 0; y < a.height(); ++y)
      for (int x = 0; x < 3 * a.width(); ++x) {
        const double difference = double(a.constScanLine(y)[x]) - double(b.constScanLine(y)[x]);
        sum += difference * difference;
      }
    return std::sqrt(sum / (3.0 * a.width() * a.height()));
  }

  app::OffscreenView view;
  vtkNew<vtkChartXY> chart;
  QTemporaryDir folder;
};

} // namespace runsieve::test
