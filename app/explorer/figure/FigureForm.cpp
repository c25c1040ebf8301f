#include "app/explorer/figure/FigureForm.h"

#include "app/explorer/charts/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace runsieve::app {

namespace {

QComboBox* choice(QStringList const& entries, int index, char const* name, char const* tip)
{
  auto* box = new QComboBox;
  box->addItems(entries);
  box->setCurrentIndex(index);
  box->setAccessibleName(name);
  box->setToolTip(tip);
  return box;
}

/// Adds a row of several widgets, whose label leads to the first one.
void addRow(QFormLayout& form, QString const& text, std::initializer_list<QWidget*> widgets)
{
  auto* layout = new QHBoxLayout;
  for (QWidget* widget : widgets) layout->addWidget(widget);
  layout->addStretch(1);
  auto* label = new QLabel(text);
  label->setBuddy(*widgets.begin());
  form.addRow(label, layout);
}

/// The label of several boxes, at the height of the first one.
QLabel* labelOf(QString const& text, QCheckBox const* first)
{
  auto* label = new QLabel(text);
  label->setAlignment(Qt::AlignRight | Qt::AlignTop);
  const int above = (first->sizeHint().height() - label->fontMetrics().height()) / 2;
  label->setContentsMargins(0, std::max(above, 0), 0, 0);
  return label;
}

QCheckBox* checkBox(QString const& text, bool on, char const* tip)
{
  auto* box = new QCheckBox(text);
  box->setChecked(on);
  box->setToolTip(tip);
  return box;
}

} // namespace

FigureForm::FigureForm(FigureContent const& content, FigureOptions const& options, QWidget* parent)
    : QWidget(parent), listed(options.parameters)
{
  auto* form = new QFormLayout(this);
  form->setContentsMargins(10, 10, 10, 10);
  form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  buildSize(*form, options);
  buildContent(*form, content, options);
  buildSwitches(*form, options);
  for (auto* box : findChildren<QCheckBox*>()) connect(box, &QCheckBox::toggled, this, &FigureForm::changed);
  for (QComboBox* box : {static_cast<QComboBox*>(family), palette, runsLook, parameterLook})
    connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &FigureForm::changed);
  for (QDoubleSpinBox* box : {width, height, fontSize, lineWidth})
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, [this] {
      showPreset();
      Q_EMIT changed();
    });
  for (QSpinBox* box : {dpi, strongest})
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &FigureForm::changed);
  connect(title, &QLineEdit::textChanged, this, &FigureForm::changed);
  connect(preset, qOverload<int>(&QComboBox::activated), this, &FigureForm::takePreset);
  showPreset();
}

QDoubleSpinBox* FigureForm::number(char const* name, char const* unit, double low, double high, double step,
                                   double value)
{
  auto* box = new QDoubleSpinBox;
  box->setRange(low, high);
  box->setSingleStep(step);
  box->setDecimals(step < 0.5 ? 2 : 1);
  box->setSuffix(QString(" ") + unit);
  box->setValue(value);
  box->setAccessibleName(name);
  box->setToolTip(name);
  box->setKeyboardTracking(false);
  return box;
}

void FigureForm::buildSize(QFormLayout& form, FigureOptions const& options)
{
  using O = FigureOptions;
  QStringList names = {"Own size"};
  for (FigurePreset const& each : figurePresets()) names << each.name;
  preset = choice(names, 0, "Size for", "Sizes that papers and slides ask for");
  width = number("Width", "mm", O::shortest, O::longest, 5.0, options.width);
  height = number("Height", "mm", O::shortest, O::longest, 5.0, options.height);
  dpi = new QSpinBox;
  dpi->setRange(O::leastDpi, O::mostDpi);
  dpi->setSingleStep(50);
  dpi->setSuffix(" dpi");
  dpi->setValue(options.dpi);
  dpi->setAccessibleName("Resolution");
  dpi->setToolTip("Pixels per inch of a PNG; in SVG and PDF the most of the images of dense runs");
  dpi->setKeyboardTracking(false);
  family = new QFontComboBox;
  family->setAccessibleName("Font");
  family->setToolTip("Font");
  family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  family->setMinimumContentsLength(12);
  if (!options.family.isEmpty()) family->setCurrentFont(QFont(options.family));
  fontSize = number("Size of letters", "pt", O::smallestFont, O::largestFont, 0.5, options.fontSize);
  lineWidth = number("Width of axes", "pt", O::thinnestLine, O::widestLine, 0.25, options.lineWidth);
  form.addRow("S&ize for", preset);
  addRow(form, "&Width, height", {width, height});
  addRow(form, "&Resolution", {dpi});
  form.addRow("&Font", family);
  addRow(form, "L&etters, lines", {fontSize, lineWidth});
}

void FigureForm::buildContent(QFormLayout& form, FigureContent const& content, FigureOptions const& options)
{
  title = new QLineEdit(options.title);
  title->setPlaceholderText("none");
  title->setAccessibleName("Title");
  runsLook =
      choice({"Density", "Lines", "Bands", "Bands of whole runs"}, static_cast<int>(options.runsLook), "Runs",
             "Shades by the number of runs, lines over lines, median and quantiles, or the "
             "deepest run and the range of the deeper half");
  parameterLook =
      choice({"Cumulative curves", "Densities", "Scatter"}, static_cast<int>(options.parameterLook),
             "Parameters as", "What the small charts show");
  strongest = new QSpinBox;
  strongest->setRange(0, 100);
  strongest->setValue(static_cast<int>(options.strongest));
  strongest->setAccessibleName("How many parameters");
  strongest->setToolTip("How many parameters, the strongest first; as many as there is room for");
  strongest->setEnabled(listed.empty());
  palette = choice({"Standard", "Colour-blind"}, static_cast<int>(options.palette), "Colours",
                   "Blue on grey can be told apart by all, and in black and white");
  form.addRow("&Title", title);
  form.addRow("Ru&ns as", runsLook);
  if (content.outputs.size() > 1) {
    auto* column = new QVBoxLayout;
    for (std::size_t const output : content.outputs) {
      QString name = elided(QString::fromStdString(content.scan->outputs[output].label.name), font(), 180.0);
      outputs.emplace_back(checkBox(name.replace('&', "&&"), true, "Show this output"), output);
      column->addWidget(outputs.back().first);
      // The last one stays: a figure without outputs shows all of them.
      connect(outputs.back().first, &QCheckBox::toggled, this, [this, box = outputs.back().first] {
        if (this->options().outputs.empty()) box->setChecked(true);
      });
    }
    form.addRow(labelOf("Outputs", outputs.front().first), column);
  }
  form.addRow("&Parameters as", parameterLook);
  addRow(form, "Str&ongest", {strongest});
  form.addRow("Colo&urs", palette);
}

void FigureForm::buildSwitches(QFormLayout& form, FigureOptions const& options)
{
  gates = checkBox("&Gates", options.gates, "Rectangles with the names of the gates");
  legend = checkBox("Legend", options.legend, "What the colours mean");
  counts = checkBox("Counts", options.counts, "Numbers of runs in the legend");
  thresholds = checkBox("T&hresholds", options.thresholds, "What a star means, and the noise floor");
  scaleBar = checkBox("Scale bars", options.scaleBar, "How many runs the shades stand for");
  ground = checkBox("White ground", options.ground, "Else the figure is transparent");
  auto* grid = new QGridLayout;
  int place = 0;
  for (QCheckBox* box : {gates, legend, counts, thresholds, scaleBar, ground}) {
    grid->addWidget(box, place / 2, place % 2);
    ++place;
  }
  form.addRow(labelOf("Show", gates), grid);
}

void FigureForm::takePreset(int index)
{
  if (index <= 0) return;
  FigurePreset const& chosen = figurePresets()[static_cast<std::size_t>(index - 1)];
  const QSignalBlocker quiet[] = {QSignalBlocker(width), QSignalBlocker(height), QSignalBlocker(fontSize),
                                  QSignalBlocker(lineWidth)};
  width->setValue(chosen.width);
  height->setValue(chosen.height);
  fontSize->setValue(chosen.fontSize);
  lineWidth->setValue(chosen.lineWidth);
  Q_EMIT changed();
}

void FigureForm::showPreset()
{
  int index = 0;
  for (std::size_t i = 0; i < figurePresets().size(); ++i) {
    FigurePreset const& each = figurePresets()[i];
    if (std::fabs(width->value() - each.width) < 0.05 && std::fabs(height->value() - each.height) < 0.05)
      index = static_cast<int>(i) + 1;
  }
  preset->setCurrentIndex(index);
}

FigureOptions FigureForm::options() const
{
  FigureOptions options;
  options.width = width->value();
  options.height = height->value();
  options.dpi = dpi->value();
  options.family = family->currentFont().family();
  options.fontSize = fontSize->value();
  options.lineWidth = lineWidth->value();
  options.title = title->text();
  options.gates = gates->isChecked();
  options.legend = legend->isChecked();
  options.counts = counts->isChecked();
  options.thresholds = thresholds->isChecked();
  options.scaleBar = scaleBar->isChecked();
  options.ground = ground->isChecked();
  options.runsLook = static_cast<RunsLook>(runsLook->currentIndex());
  options.parameterLook = static_cast<ParameterLook>(parameterLook->currentIndex());
  options.strongest = static_cast<std::size_t>(strongest->value());
  options.parameters = listed;
  options.palette = static_cast<FigurePalette>(palette->currentIndex());
  for (auto const& [box, output] : outputs)
    if (box->isChecked()) options.outputs.push_back(output);
  return options;
}

} // namespace runsieve::app
