#include <runsieve/widgets/VtkPlotWidget.h>

#include <runsieve/items/VtkVersion.h>
#include <runsieve/plot/PlotContainer.h>

#include <vtkContextScene.h>
#include <vtkContextView.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkGL2PSExporter.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>

#include <QMouseEvent>

VtkPlotWidget::VtkPlotWidget(QWidget* parent) : QVTKOpenGLNativeWidget(parent)
{
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
  view->Render();
}

void VtkPlotWidget::updatePlot(bool clear)
{
  if (!hasContainer()) return;
  if (clear) {
    view->GetScene()->ClearItems();
    view->GetScene()->AddItem(plotContainer->getItem());
  }
  view->Render();
}

void VtkPlotWidget::printPlot(QString fileName)
{
  if (!hasContainer()) return;
  auto exporter = vtkSmartPointer<vtkGL2PSExporter>::New();
  if (!exporter) return; // its factory is missing
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

bool VtkPlotWidget::event(QEvent* event)
{
  if (event->type() != QEvent::MouseButtonDblClick) return QVTKOpenGLNativeWidget::event(event);
  // Charts ignore double clicks, so a drag begun soon after a press would be lost without a trace.
  auto const* click = static_cast<QMouseEvent*>(event);
  QMouseEvent press(QEvent::MouseButtonPress, click->localPos(), click->windowPos(), click->screenPos(),
                    click->button(), click->buttons(), click->modifiers());
  return QVTKOpenGLNativeWidget::event(&press);
}
