#include "app/explorer/parameters/ParametersPane.h"

#include "app/explorer/parameters/GroupLegend.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

namespace runsieve::app {

ParametersPane::ParametersPane(Document& ofDocument, QWidget* parent)
    : QWidget(parent), document(ofDocument), shown(ofDocument)
{
  setAccessibleName("Parameters");
  pages = new QTabWidget;
  pages->setDocumentMode(true);
  pages->addTab(chartsPage(), "Charts");
  pairing = new PairsPage(shown);
  pairing->setMinimumWidth(200);
  boxes = new BoxPage(shown);
  constexpr int narrow = 230; // texts of pages wrap or are cut, so that windows can be small
  boxes->setMinimumWidth(narrow);
  lines = new ParallelView(shown);
  pages->addTab(pairing, "Pairs");
  pages->addTab(boxes, "Box");
  pages->addTab(lines, "Parallel");
  sureness = new StabilityPage(document);
  sureness->setMinimumWidth(narrow);
  pages->addTab(sureness, "Enough runs?");
  const char* const tips[] = {"A chart of each parameter, the one that differs most first",
                              "Parameters that go together in the passing runs",
                              "Ranges of the parameters that hold the passing runs",
                              "All parameters as parallel axes, each run as a line over them",
                              "Which differences are settled, and which would need more runs"};
  for (int page = 0; page < pages->count(); ++page) pages->setTabToolTip(page, tips[page]);
  connect(lines, &ParallelView::chosen, this, &ParametersPane::openLarge);
  connect(lines, &ParallelView::told, this, &ParametersPane::told);
  connect(pages, &QTabWidget::currentChanged, this, &ParametersPane::pageChanged);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(pages);
  connect(&document, &Document::stateChanged, this, &ParametersPane::refresh);
  connect(&document, &Document::opened, this, &ParametersPane::refresh);
  refresh();
}

QWidget* ParametersPane::chartsPage()
{
  auto* page = new QWidget;
  looks = new QComboBox;
  looks->addItems({"Cumulative curves", "Densities", "Scatter"});
  looks->setAccessibleName("What the charts show");
  looks->setToolTip("Cumulative curves: the share of the runs up to a value. Densities: where runs are many. "
                    "Scatter: values against the last value of the first output");
  charts = new ParameterGrid(shown);
  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(8, 4, 8, 2);
  bar->setSpacing(12);
  bar->addWidget(looks);
  bar->addWidget(new GroupLegend(document));
  bar->addStretch(1);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(bar);
  layout->addWidget(charts, 1);
  connect(looks, qOverload<int>(&QComboBox::activated), this, [this](int index) {
    document.change("Charts of the parameters",
                    [&](State& state) { state.view.parameterLook = static_cast<ParameterLook>(index); });
  });
  connect(charts, &ParameterGrid::chosen, this, &ParametersPane::openLarge);
  connect(charts, &ParameterGrid::told, this, &ParametersPane::told);
  return page;
}

void ParametersPane::refresh()
{
  const QSignalBlocker quiet(looks);
  looks->setEnabled(document.isOpen());
  looks->setCurrentIndex(static_cast<int>(document.state().view.parameterLook));
}

void ParametersPane::showPage(Page page)
{
  pages->setCurrentIndex(static_cast<int>(page));
}

ParametersPage ParametersPane::page() const
{
  return static_cast<Page>(pages->currentIndex());
}

void ParametersPane::openLarge(std::size_t parameter)
{
  if (window) {
    window->showParameter(parameter);
  } else {
    window = new LargeChart(shown, parameter, this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->resize(720, 540);
  }
  window->show();
  window->raise();
  window->activateWindow();
}

} // namespace runsieve::app
