#include "app/explorer/parameters/LargeChart.h"

#include "app/explorer/controls/LostMouse.h"
#include "app/explorer/parameters/ParameterNumbers.h"
#include "app/explorer/parameters/PinMarks.h"
#include "app/explorer/parameters/PlainTip.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHelpEvent>
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
      theme(Theme::ofPalette(palette(), font())), scene{runs, feature, spans, theme, 1.0, true},
      charts(scene), hand(document)
{
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAccessibleName("Chart of a parameter");
  new LostMouse(*this, [this] { hand.cancel(); });
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(&document, &Document::previewGivenUp, this, [this] { hand.cancel(); });
  connect(&runs, &ParameterRuns::opened, this, [this] { charts.clear(); });
  connect(&runs, &ParameterRuns::changed, this, &LargeChartView::refresh);
  refresh();
}

void LargeChartView::showParameter(std::size_t wanted)
{
  hand.cancel();
  charts.clear();
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
  update();
}

ParameterChart& LargeChartView::chart()
{
  feature.update();
  scene.ratio = devicePixelRatioF();
  return charts.at(parameter, size());
}

QRectF LargeChartView::plot()
{
  return isValid() ? chart().plot() : QRectF();
}

QRectF LargeChartView::row(std::size_t text)
{
  const TextBarRows rows = chart().bars();
  return rows.place(rows.rowOf(text));
}

void LargeChartView::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  painter.fillRect(rect(), theme.paper);
  if (isValid()) chart().paint(painter, theme.paper);
}

void LargeChartView::changeEvent(QEvent* event)
{
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  theme = Theme::ofPalette(palette(), font());
  charts.clear();
  update();
}

bool LargeChartView::event(QEvent* event)
{
  if (event->type() != QEvent::ToolTip || !isValid()) return QWidget::event(event);
  auto* help = static_cast<QHelpEvent*>(event);
  QStringList lines = chart().barLines(help->pos());
  lines += pinLines(document, parameter);
  lines << gestureWords(document.scan().parameters[parameter]);
  showPlainTip(help->globalPos(), lines.join('\n'), this);
  return true;
}

void LargeChartView::mousePressEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton && isValid())
    hand.take(chart().holdAt(event->localPos(), event->modifiers()), event->localPos());
}

void LargeChartView::mouseMoveEvent(QMouseEvent* event)
{
  if (!isValid()) return;
  if (hand.isActive()) {
    hand.follow(event->localPos());
    return;
  }
  auto const hold = chart().holdAt(event->localPos(), Qt::NoModifier);
  setCursor(hold ? hold->cursor() : Qt::ArrowCursor);
}

void LargeChartView::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton) hand.finish();
}

void LargeChartView::keyPressEvent(QKeyEvent* event)
{
  if (event->key() == Qt::Key_Escape && hand.isActive())
    hand.cancel();
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
