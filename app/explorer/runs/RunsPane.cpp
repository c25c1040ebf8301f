#include "app/explorer/runs/RunsPane.h"

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

RunsPane::RunsPane(Document& ofDocument, QWidget* parent)
    : QWidget(parent), document(ofDocument), shown(ofDocument)
{
  setAccessibleName("Charts of the runs");
  page = new QWidget;
  page->installEventFilter(this);
  scroll = new QScrollArea;
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setMinimumSize(220, 130);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(scroll);
  column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  connect(&document, &Document::opened, this, &RunsPane::rebuild);
  connect(&document, &Document::stateChanged, this, &RunsPane::rebuild);
  connect(&shown, &RunsZoom::changed, this, &RunsPane::align);
  QScrollBar* bar = scroll->verticalScrollBar();
  connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
    if (staysAtEnd) bar->setValue(bar->maximum());
  });
  connect(bar, &QScrollBar::actionTriggered, this, [this] { staysAtEnd = false; });
  rebuild();
}

RunsView* RunsPane::view(std::size_t place) const
{
  return place < charts.size() ? charts[place]->view() : nullptr;
}

void RunsPane::setTool(RunsTool wanted)
{
  tool = wanted;
  for (RunsChart* chart : charts) chart->view()->setTool(tool);
}

bool RunsPane::addOutput()
{
  if (!document.isOpen()) return false;
  std::vector<std::size_t> const& now = document.state().view.outputs;
  if (now.size() >= std::min(ViewState::mostOutputs, document.scan().outputs.size())) return false;
  std::size_t next = 0;
  while (std::find(now.begin(), now.end(), next) != now.end()) ++next;
  document.change("Add chart", [&](State& state) { state.view.outputs.push_back(next); });
  return true;
}

bool RunsPane::isSettled() const
{
  return std::all_of(charts.begin(), charts.end(),
                     [](RunsChart* chart) { return chart->view()->isSettled(); });
}

void RunsPane::rebuild()
{
  const std::size_t wanted = document.isOpen() ? document.state().view.outputs.size() : 0;
  if (wanted == charts.size() && document.sharedScan() == scan) {
    staysAtEnd = false;
    for (RunsChart* chart : charts) chart->refresh();
    align();
    return;
  }
  staysAtEnd = document.sharedScan() == scan && wanted > charts.size();
  // A chart that goes may be the one whose button has just been pressed.
  for (RunsChart* chart : charts) {
    chart->hide();
    chart->view()->disconnect(this);
    chart->deleteLater();
  }
  charts.clear();
  scan = document.sharedScan();
  for (std::size_t place = 0; place < wanted; ++place) {
    auto* chart = new RunsChart(document, shown, place);
    chart->view()->setTool(tool);
    chart->view()->setTimeNumbers(place + 1 == wanted);
    connect(chart->view(), &RunsView::told, this, &RunsPane::told);
    connect(chart->view(), &RunsView::gateMenuWanted, this, &RunsPane::gateMenuWanted);
    column->addWidget(chart, 1);
    charts.push_back(chart);
  }
  align();
}

void RunsPane::align()
{
  double left = 0.0;
  for (RunsChart* chart : charts) left = std::max(left, chart->view()->neededLeft());
  for (RunsChart* chart : charts) chart->view()->setLeastLeft(left);
  shareHeight();
}

void RunsPane::shareHeight()
{
  if (charts.empty()) return;
  // The last one has the numbers of the time axis besides; the plots are equally high.
  const int numbers =
      static_cast<int>(std::lround(charts.back()->view()->belowPlot() - charts.front()->view()->belowPlot()));
  const int each = std::max(1, (page->height() - numbers) / static_cast<int>(charts.size()));
  for (RunsChart* chart : charts)
    column->setStretchFactor(chart, each + (chart == charts.back() ? numbers : 0));
}

bool RunsPane::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == page && event->type() == QEvent::Resize) shareHeight();
  return QWidget::eventFilter(watched, event);
}

} // namespace runsieve::app
