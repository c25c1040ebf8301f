#include "app/explorer/runs/RunsChart.h"

#include "app/explorer/controls/SearchableBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

namespace runsieve::app {

RunsChart::RunsChart(Document& ofDocument, RunsZoom& zoom, std::size_t ofPlace, QWidget* parent)
    : QWidget(parent), document(ofDocument), place(ofPlace)
{
  outputs = new SearchableBox;
  outputs->setAccessibleName("Output");
  outputs->setToolTip("The output that this chart shows; type a part of its name to find it");
  for (ScanOutput const& output : document.scan().outputs)
    outputs->addItem(QString::fromStdString(output.label.name));
  logarithmic = new QCheckBox("Log");
  logarithmic->setToolTip("Logarithmic axis of values");
  closing = new QToolButton;
  closing->setText(QString::fromUtf8("\u00d7"));
  closing->setAutoRaise(true);
  closing->setToolTip("Close this chart");
  closing->setAccessibleName("Close this chart");
  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(6, 2, 6, 0);
  bar->setSpacing(10);
  bar->addWidget(outputs);
  bar->addWidget(logarithmic);
  legend = new RunsLegend;
  bar->addWidget(legend, 1);
  bar->addWidget(closing);
  chart = new RunsView(document, zoom, document.state().view.outputs[place]);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(bar);
  layout->addWidget(chart, 1);
  connect(outputs, qOverload<int>(&QComboBox::activated), this, &RunsChart::choose);
  connect(logarithmic, &QCheckBox::toggled, this, [this](bool on) {
    const std::size_t output = document.state().view.outputs[place];
    document.change(on ? "Logarithmic axis" : "Linear axis",
                    [&](State& state) { state.view.logOutputs[output] = on; });
  });
  connect(closing, &QToolButton::clicked, this, &RunsChart::close);
  connect(chart, &RunsView::legendChanged, this, [this] { legend->setLines(chart->legend()); });
  refresh();
}

void RunsChart::refresh()
{
  ViewState const& view = document.state().view;
  const std::size_t output = view.outputs[place];
  const QSignalBlocker quietOutputs(outputs);
  const QSignalBlocker quietLog(logarithmic);
  chart->setOutput(output);
  outputs->setCurrentIndex(static_cast<int>(output));
  auto const log = view.logOutputs.find(output);
  logarithmic->setChecked(log != view.logOutputs.end() && log->second);
  closing->setVisible(view.outputs.size() > 1);
}

void RunsChart::choose(int index)
{
  if (index < 0) return;
  document.change("Show output",
                  [&](State& state) { state.view.outputs[place] = static_cast<std::size_t>(index); });
  chart->setFocus(); // keys are for the chart again
}

void RunsChart::close()
{
  document.change("Close chart", [&](State& state) {
    state.view.outputs.erase(state.view.outputs.begin() + static_cast<std::ptrdiff_t>(place));
  });
}

} // namespace runsieve::app
