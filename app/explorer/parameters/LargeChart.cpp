#include "app/explorer/parameters/LargeChart.h"

#include "app/explorer/parameters/ParameterNumbers.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

LargeChartView::LargeChartView(ParameterRuns& ofRuns, std::size_t shown, QWidget* parent)
    : QWidget(parent), runs(ofRuns), document(ofRuns.ofDocument()), parameter(shown), feature(document),
      theme(Theme::ofPalette(palette(), font())), drag(document)
{
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAccessibleName("Chart of a parameter");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(&runs, &ParameterRuns::changed, this, &LargeChartView::refresh);
  refresh();
}

void LargeChartView::showParameter(std::size_t wanted)
{
  drag.cancel();
  parameter = wanted;
  refresh();
}

bool LargeChartView::isValid() const
{
  return document.isOpen() && parameter < document.scan().parameters.size();
}

void LargeChartView::refresh()
{
  spans = spansOf(document);
  feature.update();
  update();
}

ChartScene LargeChartView::scene() const
{
  return {runs, feature, spans, theme, devicePixelRatioF(), true};
}

QRectF LargeChartView::plot() const
{
  const ChartScene shown = scene();
  return isValid() ? ParameterChart(shown, parameter, rect()).plot() : QRectF();
}

void LargeChartView::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  const ChartScene shown = scene();
  if (isValid()) ParameterChart(shown, parameter, rect()).paint(painter);
}

void LargeChartView::changeEvent(QEvent* event)
{
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  update();
}

void LargeChartView::mousePressEvent(QMouseEvent* event)
{
  if (event->button() != Qt::LeftButton || !isValid()) return;
  const ChartScene shown = scene();
  const ParameterChart now(shown, parameter, rect());
  if (now.hasAxis() && now.plot().contains(event->localPos()))
    drag.begin(now.axis(), event->localPos().x(), event->modifiers().testFlag(Qt::ShiftModifier));
}

void LargeChartView::mouseMoveEvent(QMouseEvent* event)
{
  if (!isValid()) return;
  if (drag.isActive()) {
    drag.follow(event->localPos().x());
    return;
  }
  const ChartScene shown = scene();
  const ParameterChart now(shown, parameter, rect());
  auto const here = spans.find(parameter);
  const bool isOnPlot = now.hasAxis() && now.plot().contains(event->localPos());
  auto const held = isOnPlot && here != spans.end() ? spanAt(here->second, now.axis(), event->localPos().x())
                                                    : std::nullopt;
  setCursor(!isOnPlot                       ? Qt::ArrowCursor
            : !held                         ? Qt::CrossCursor
            : held->grip == SpanGrip::Whole ? Qt::SizeAllCursor
                                            : Qt::SizeHorCursor);
}

void LargeChartView::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton) drag.finish();
}

void LargeChartView::keyPressEvent(QKeyEvent* event)
{
  if (event->key() == Qt::Key_Escape && drag.isActive())
    drag.cancel();
  else
    QWidget::keyPressEvent(event); // closes the window
}

LargeChart::LargeChart(ParameterRuns& ofRuns, std::size_t shown, QWidget* parent)
    : QDialog(parent), runs(ofRuns), document(ofRuns.ofDocument()), parameter(shown)
{
  setModal(false);
  chart = new LargeChartView(runs, parameter);
  numbers = new QLabel;
  numbers->setTextFormat(Qt::PlainText);
  numbers->setWordWrap(true);
  numbers->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  numbers->setAccessibleName("Numbers of the parameter");
  logarithmic = new QCheckBox("&Logarithmic axis");
  logarithmic->setToolTip("Equal ratios take equal room");
  auto* former = new QPushButton("&Previous");
  former->setToolTip("The parameter before this one in the order of the charts");
  auto* next = new QPushButton("&Next");
  next->setToolTip("The parameter after this one in the order of the charts");
  auto* closing = new QPushButton("&Close");
  for (QPushButton* button : {former, next, closing}) button->setAutoDefault(false);
  auto* row = new QHBoxLayout;
  row->addWidget(logarithmic);
  row->addStretch(1);
  row->addWidget(former);
  row->addWidget(next);
  row->addWidget(closing);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(chart, 1);
  layout->addWidget(numbers);
  layout->addLayout(row);
  connect(former, &QPushButton::clicked, this, [this] { step(-1); });
  connect(next, &QPushButton::clicked, this, [this] { step(1); });
  connect(closing, &QPushButton::clicked, this, &QDialog::close);
  connect(logarithmic, &QCheckBox::toggled, this, [this](bool on) {
    document.change(on ? "Logarithmic axis" : "Linear axis",
                    [&](State& state) { state.view.logParameters[parameter] = on; });
  });
  connect(&runs, &ParameterRuns::changed, this, &LargeChart::refresh);
  connect(&runs, &ParameterRuns::opened, this, &QDialog::close);
  refresh();
}

void LargeChart::showParameter(std::size_t wanted)
{
  parameter = wanted;
  chart->showParameter(wanted);
  refresh();
}

QString LargeChart::words() const
{
  return numbers->text();
}

void LargeChart::step(int by)
{
  auto const& order = runs.order();
  const auto here = std::find(order.begin(), order.end(), parameter) - order.begin();
  const auto size = static_cast<std::ptrdiff_t>(order.size());
  if (size > 0) showParameter(order[static_cast<std::size_t>((here + by + size) % size)]);
}

void LargeChart::refresh()
{
  if (!document.isOpen() || parameter >= document.scan().parameters.size()) return;
  ScanParameter const& shown = document.scan().parameters[parameter];
  setWindowTitle(elided(titleOf(shown.label), font(), 400.0));
  const QSignalBlocker quiet(logarithmic);
  logarithmic->setVisible(!shown.isText());
  if (shown.isText()) {
    const TextGroups groups = runs.textGroups(parameter);
    numbers->setText(parameterWords(document, parameter, groups.allPassing, groups.allOthers));
    return;
  }
  logarithmic->setChecked(runs.isLogarithmic(parameter));
  logarithmic->setEnabled(runs.spread(parameter).allowsLogarithm());
  const ParameterGroups groups = runs.groups(parameter);
  numbers->setText(parameterWords(document, parameter, groups.passing.total(), groups.others.total()));
}

} // namespace runsieve::app
