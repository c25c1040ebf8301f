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

#include <vector>

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

/// What is wrong with the matrix of VTK 9.3 is right in this one:
///
/// - At every layout but the first the large chart gets the axes of the columns in whose cell it stands. Here
///   it gets those of the active plot again.
/// - The phase of the animation is not initialised. Where the memory happens to hold that of the rotation,
///   nothing is ever painted; paints() tells.
class ScatterPlotMatrix : public vtkScatterPlotMatrix
{
public:
  static ScatterPlotMatrix* New() { VTK_STANDARD_NEW_BODY(ScatterPlotMatrix); }

  /// Whether it paints itself while nothing is animated.
  [[nodiscard]] bool paints()
  {
    isAsked = true;
    bool begins = false;
    try {
      this->Paint(nullptr);
    } catch (Begun const&) {
      begins = true;
    }
    isAsked = false;
    return begins;
  }

  void Update() override
  {
    if (isAsked) throw Begun(); // a matrix that paints comes here first, and must not go on
    const bool isLaidOut = this->GetMTime() <= laidOut;
    this->vtkScatterPlotMatrix::Update();
    laidOut = this->GetMTime();
    if (!isLaidOut && this->ActivePlotValid && this->GetMainChart()) showActivePlot();
  }

private:
  struct Begun
  {};

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
  bool isAsked = false; ///< whether it paints
};

} // namespace

void rebuildPoints(vtkPlotPoints* plot, vtkTable*)
{
  plot->UpdateCache();
}

vtkSmartPointer<vtkScatterPlotMatrix> makeScatterPlotMatrix()
{
  // Those that never paint keep their memory until another one has been made elsewhere.
  constexpr std::size_t mostTries = 1000;
  std::vector<vtkSmartPointer<ScatterPlotMatrix>> useless;
  auto made = vtkSmartPointer<ScatterPlotMatrix>::New();
  while (!made->paints() && useless.size() < mostTries) {
    useless.push_back(made);
    made = vtkSmartPointer<ScatterPlotMatrix>::New();
  }
  return made;
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
