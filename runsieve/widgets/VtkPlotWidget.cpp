#include <runsieve/widgets/VtkPlotWidget.h>

#include <runsieve/items/VtkVersion.h>
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/widgets/HandFrames.h>
#include <runsieve/widgets/SelectionDrag.h>

#include <vtkChart.h>
#include <vtkContextScene.h>
#include <vtkContextView.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkGL2PSExporter.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QScopedValueRollback>

namespace {

/// Whether the current context draws without a graphics card.
bool isSoftwareRenderer()
{
  QOpenGLContext* context = QOpenGLContext::currentContext();
  if (!context) return false;
  auto const* name = reinterpret_cast<char const*>(context->functions()->glGetString(GL_RENDERER));
  const QString renderer = QString::fromLatin1(name).toLower();
  for (const char* known : {"llvmpipe", "softpipe", "swr", "software", "swiftshader"})
    if (renderer.contains(known)) return true;
  return false;
}

} // namespace

VtkPlotWidget::VtkPlotWidget(QWidget* parent) : QVTKOpenGLNativeWidget(parent)
{
  drag = new runsieve::SelectionDrag(this); // not before: a new child is an event, which reads the members
  // The widget first, then the view: the other order leaves the frame black.
  vtkNew<vtkGenericOpenGLRenderWindow> window;
  setRenderWindow(window);
  view = vtkSmartPointer<vtkContextView>::New();
  runsieve::makePrintable(view);
  plotContainer = new PlotContainer(this);
  guard = plotContainer;
  view->GetScene()->AddItem(plotContainer->getItem());
  plotContainer->example();
  plotContainer->redraw();
  view->SetRenderWindow(renderWindow());
  view->SetInteractor(interactor());
  view->GetRenderWindow()->LineSmoothingOn();
  frames = std::make_unique<runsieve::HandFrames>(renderWindow(), interactor(), [this] { view->Render(); });
}

VtkPlotWidget::~VtkPlotWidget()
{
  // A container that lives on must not keep pointing at the scene, which dies with the view.
  view->GetScene()->ClearItems();
  if (hasContainer()) plotContainer->setScene(nullptr);
}

void VtkPlotWidget::setPlotContainer(PlotContainer* container)
{
  if (!container) return;
  plotContainer = container;
  guard = container;
  container->setScene(view->GetScene());
  container->redraw();
  view->GetScene()->ClearItems();
  view->GetScene()->AddItem(container->getItem());
  renderExactly();
}

void VtkPlotWidget::updatePlot(bool clear)
{
  if (!hasContainer()) return;
  if (clear) {
    view->GetScene()->ClearItems();
    view->GetScene()->AddItem(plotContainer->getItem());
  }
  renderExactly();
}

void VtkPlotWidget::renderExactly()
{
  frames->end();
  view->Render();
}

void VtkPlotWidget::printPlot(QString fileName)
{
  if (!hasContainer()) return;
  auto exporter = vtkSmartPointer<vtkGL2PSExporter>::New();
  if (!exporter) return; // its factory is missing
  frames->end();
  exporter->SetRenderWindow(view->GetRenderWindow());
  exporter->SetFileFormat(vtkGL2PSExporter::PDF_FILE);
  exporter->SetSort(vtkGL2PSExporter::NO_SORT);
  exporter->SetSimpleLineOffset(0);
  exporter->SetCompress(0);
  exporter->SetTextAsPath(1);
  const QString extension = QStringLiteral(".pdf");
  const int position = fileName.lastIndexOf(extension, -1, Qt::CaseInsensitive);
  if (position >= 2) fileName.remove(position, extension.size());
  exporter->SetFilePrefix(fileName.toLocal8Bit().constData());
  exporter->Write();
}

void VtkPlotWidget::initializeGL()
{
  QVTKOpenGLNativeWidget::initializeGL();
  // Several samples of each pixel take a renderer on the processor 30 ms and more for each frame, changed or
  // not.
  if (isSoftwareRenderer()) renderWindow()->SetMultiSamples(0);
}

void VtkPlotWidget::paintGL()
{
  // Qt asks for the frame out of a paint event, or else for a picture of the widget.
  if (!isPainting && frames && frames->areMoved()) renderExactly();
  QVTKOpenGLNativeWidget::paintGL();
}

QPointF VtkPlotWidget::inScene(QPointF const& position) const
{
  // The scene counts device pixels from below.
  const double scale = devicePixelRatioF();
  return {position.x() * scale, height() * scale - 1.0 - position.y() * scale};
}

void VtkPlotWidget::followDrag(QEvent* event)
{
  auto const* mouse = static_cast<QMouseEvent*>(event);
  auto tell = [this, mouse] {
    if (auto const rectangle = drag->to(inScene(mouse->localPos()), mouse->modifiers()))
      Q_EMIT drag->moved(*rectangle);
  };
  switch (event->type()) {
  case QEvent::MouseButtonPress:
    if (!drag->isUnderWay() && hasContainer() &&
        drag->begin(plotContainer->chartXY, *mouse, inScene(mouse->localPos())))
      tell();
    break;
  case QEvent::MouseMove:
    if (drag->isUnderWay()) tell();
    break;
  case QEvent::MouseButtonRelease:
    if (!drag->isUnderWay() || mouse->button() != drag->button()) break;
    drag->end();
    Q_EMIT drag->ended(false);
    break;
  default:
    break;
  }
}

void VtkPlotWidget::cancelDrag()
{
  const QPointF start = drag->pressed();
  const Qt::MouseButton button = drag->button();
  drag->end();
  ignoresRelease = true;
  // For the chart the drag ends where it began, which selects nothing.
  QMouseEvent back(QEvent::MouseMove, start, Qt::NoButton, button, Qt::NoModifier);
  QMouseEvent release(QEvent::MouseButtonRelease, start, button, Qt::NoButton, Qt::NoModifier);
  QVTKOpenGLNativeWidget::event(&back);
  QVTKOpenGLNativeWidget::event(&release);
  Q_EMIT drag->ended(true);
  view->Render();
}

/// A selection moves no axes, and its highlights need runs that are counted.
void VtkPlotWidget::followHand(QEvent* event, bool selects)
{
  switch (event->type()) {
  case QEvent::MouseButtonPress:
    if (selects) frames->rest();
    break;
  case QEvent::MouseMove:
    if (!selects && static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton) frames->move();
    break;
  case QEvent::MouseButtonRelease: // of a rectangle to zoom into
    if (!selects) frames->move();
    break;
  case QEvent::Wheel:
  case QEvent::Resize:
    frames->move();
    break;
  default:
    break;
  }
}

bool VtkPlotWidget::handle(QEvent* event)
{
  const bool selected = drag->isUnderWay();
  followDrag(event);
  followHand(event, selected || drag->isUnderWay());
  const runsieve::HandFrames::Allowed allowed(*frames);
  return QVTKOpenGLNativeWidget::event(event);
}

bool VtkPlotWidget::event(QEvent* event)
{
  if (!frames) return QVTKOpenGLNativeWidget::event(event); // it is being made
  const QScopedValueRollback<bool> painting(isPainting, event->type() == QEvent::Paint);
  if (event->type() == QEvent::KeyPress && drag->isUnderWay() &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    cancelDrag();
    return true;
  }
  if (ignoresRelease && (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease)) {
    // A move without a button means that the release was elsewhere.
    const bool isHeld = static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
    if (event->type() == QEvent::MouseButtonRelease || !isHeld) ignoresRelease = false;
    return true;
  }
  if (event->type() != QEvent::MouseButtonDblClick) return handle(event);
  // Charts ignore double clicks, so a drag begun soon after a press would be lost without a trace.
  auto const* click = static_cast<QMouseEvent*>(event);
  QMouseEvent press(QEvent::MouseButtonPress, click->localPos(), click->windowPos(), click->screenPos(),
                    click->button(), click->buttons(), click->modifiers());
  return handle(&press);
}
