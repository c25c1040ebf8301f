#include <runsieve/items/VtkVersion.h>

#include <vtkAxis.h>
#include <vtkChart.h>
#include <vtkContextActor.h>
#include <vtkContextView.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLContextDevice2D.h>
#include <vtkPlotPoints.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>
#include <vtkScatterPlotMatrix.h>
#include <vtkUnsignedCharArray.h>
#include <vtkVersionMacros.h>

namespace runsieve {

#if VTK_VERSION_NUMBER >= VTK_VERSION_CHECK(9, 2, 0)

namespace {

/// VTK 9.3 reads the colours of the points that it exports even if they have none. This device gives it an
/// empty array instead of a null pointer.
class PrintableDevice : public vtkOpenGLContextDevice2D
{
public:
  static PrintableDevice* New() { VTK_STANDARD_NEW_BODY(PrintableDevice); }

  using vtkOpenGLContextDevice2D::DrawMarkers;
  void DrawMarkers(int shape, bool highlight, vtkDataArray* positions, vtkUnsignedCharArray* colors,
                   std::uintptr_t cache) override
  {
    vtkNew<vtkUnsignedCharArray> none;
    this->vtkOpenGLContextDevice2D::DrawMarkers(shape, highlight, positions, colors ? colors : none.Get(),
                                                cache);
  }
};

/// VTK 9.3 gives the large chart the axes of the columns in whose cell it stands, at every layout but the
/// first. This matrix gives it those of the active plot again.
class ScatterPlotMatrix : public vtkScatterPlotMatrix
{
public:
  static ScatterPlotMatrix* New() { VTK_STANDARD_NEW_BODY(ScatterPlotMatrix); }

  void Update() override
  {
    const bool isLaidOut = this->GetMTime() <= laidOut;
    this->vtkScatterPlotMatrix::Update();
    laidOut = this->GetMTime();
    if (!isLaidOut && this->ActivePlotValid && this->GetMainChart()) showActivePlot();
  }

private:
  void showActivePlot()
  {
    vtkChart* active = this->GetChart(this->ActivePlot);
    auto share = [this, active](int side, int otherSide) {
      double range[2];
      active->GetAxis(side)->GetUnscaledRange(range);
      this->GetMainChart()->GetAxis(side)->SetUnscaledRange(range);
      this->GetMainChart()->GetAxis(otherSide)->SetUnscaledRange(range);
    };
    share(vtkAxis::BOTTOM, vtkAxis::TOP);
    share(vtkAxis::LEFT, vtkAxis::RIGHT);
  }

  vtkMTimeType laidOut = 0;
};

} // namespace

void rebuildPoints(vtkPlotPoints* plot, vtkTable*)
{
  plot->UpdateCache();
}

vtkSmartPointer<vtkScatterPlotMatrix> makeScatterPlotMatrix()
{
  return vtkSmartPointer<ScatterPlotMatrix>::New();
}

void makePrintable(vtkContextView* view)
{
  vtkNew<PrintableDevice> device;
  vtkProp* actor = view->GetRenderer()->GetViewProps()->GetLastProp();
  vtkContextActor::SafeDownCast(actor)->SetForceDevice(device);
}

#else

namespace {

/// Opens what only subclasses may call.
struct OpenPlotPoints : vtkPlotPoints
{
  using vtkPlotPoints::UpdateTableCache;
};

} // namespace

void rebuildPoints(vtkPlotPoints* plot, vtkTable* input)
{
  (plot->*(&OpenPlotPoints::UpdateTableCache))(input);
}

vtkSmartPointer<vtkScatterPlotMatrix> makeScatterPlotMatrix()
{
  return vtkSmartPointer<vtkScatterPlotMatrix>::New();
}

void makePrintable(vtkContextView*) {}

#endif

} // namespace runsieve
