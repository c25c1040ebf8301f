#include "app/explorer/window/LimitsDialog.h"

#include "app/explorer/charts/AxisTicks.h"
#include "app/explorer/runs/RunsZoom.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace runsieve::app {

namespace {

/// Two fields of an axis.
struct LimitFields
{
  QLineEdit* low;
  QLineEdit* high;
  AxisMap all; ///< what an empty field means

  [[nodiscard]] bool isEmpty() const { return low->text().isEmpty() && high->text().isEmpty(); }
  /// Nothing if a field holds no number.
  [[nodiscard]] static std::optional<double> numberOf(QLineEdit const& field, double otherwise)
  {
    if (field.text().isEmpty()) return otherwise;
    bool isNumber = false;
    const double number = field.text().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
  }
  /// What is wrong with them; empty if nothing is.
  [[nodiscard]] QString fault() const
  {
    for (QLineEdit const* field : {low, high})
      if (!numberOf(*field, 0.0))
        return QString("%1: \"%2\" is no number").arg(field->accessibleName(), field->text());
    const double from = *numberOf(*low, all.low());
    const double to = *numberOf(*high, all.high());
    if (from < to) return {};
    return QString("%1: %2 is not below %3, the high end")
        .arg(low->accessibleName(), numberText(from), numberText(to));
  }
  /// Nothing with a fault.
  [[nodiscard]] std::optional<TypedRange> range() const
  {
    if (!fault().isEmpty()) return std::nullopt;
    return TypedRange{*numberOf(*low, all.low()), *numberOf(*high, all.high())};
  }
};

LimitFields addAxis(QGridLayout& grid, QString const& name, AxisMap const& all,
                    std::optional<TypedRange> const& typed)
{
  const int row = grid.rowCount();
  auto* label = new QLabel(name);
  label->setTextFormat(Qt::PlainText);
  LimitFields fields{new QLineEdit, new QLineEdit, all};
  fields.low->setPlaceholderText(numberText(all.low()));
  fields.high->setPlaceholderText(numberText(all.high()));
  fields.low->setAccessibleName("Low end of " + name);
  fields.high->setAccessibleName("High end of " + name);
  if (typed) {
    fields.low->setText(QString::number(typed->low, 'g', 12));
    fields.high->setText(QString::number(typed->high, 'g', 12));
  }
  grid.addWidget(label, row, 0);
  grid.addWidget(fields.low, row, 1);
  grid.addWidget(fields.high, row, 2);
  return fields;
}

} // namespace

void editLimits(Document& document, RunsZoom const& zoom, QWidget* parent)
{
  ViewState const& view = document.state().view;
  QDialog dialog(parent);
  dialog.setWindowTitle("Axis limits");
  auto* grid = new QGridLayout(&dialog);
  grid->addWidget(new QLabel("Axis"), 0, 0);
  grid->addWidget(new QLabel("From"), 0, 1);
  grid->addWidget(new QLabel("To"), 0, 2);
  std::vector<LimitFields> fields;
  fields.push_back(addAxis(*grid, "Time", zoom.extents().timeAxis(), view.timeRange));
  for (std::size_t const output : view.outputs) {
    auto const typed = view.outputRanges.find(output);
    auto const log = view.logOutputs.find(output);
    fields.push_back(addAxis(*grid, QString::fromStdString(document.scan().outputs[output].label.name),
                             zoom.extents().axis(output, log != view.logOutputs.end() && log->second),
                             typed == view.outputRanges.end() ? std::nullopt : std::optional(typed->second)));
  }
  auto* buttons =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Reset);
  auto* message = new QLabel;
  message->setTextFormat(Qt::PlainText);
  message->setWordWrap(true);
  message->setAccessibleName("Error");
  message->setMinimumHeight(2 * message->fontMetrics().lineSpacing()); // so that the dialog stays still
  message->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  grid->addWidget(message, grid->rowCount(), 0, 1, 3);
  grid->addWidget(buttons, grid->rowCount(), 0, 1, 3);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(&document, &Document::opened, &dialog, &QDialog::reject);
  QObject::connect(buttons->button(QDialogButtonBox::Reset), &QPushButton::clicked, &dialog, [&fields] {
    for (LimitFields const& axis : fields) {
      axis.low->clear();
      axis.high->clear();
    }
  });
  auto const check = [&] {
    QString fault;
    for (LimitFields const& axis : fields)
      if (fault.isEmpty()) fault = axis.fault();
    message->setText(fault);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
  };
  for (LimitFields const& axis : fields)
    for (QLineEdit* field : {axis.low, axis.high})
      QObject::connect(field, &QLineEdit::textChanged, &dialog, check);
  if (dialog.exec() != QDialog::Accepted) return;
  document.change("Axis limits", [&](State& state) {
    state.view.timeRange = fields[0].isEmpty() ? std::nullopt : fields[0].range();
    for (std::size_t i = 1; i < fields.size(); ++i) {
      const std::size_t output = state.view.outputs[i - 1];
      if (fields[i].isEmpty())
        state.view.outputRanges.erase(output);
      else
        state.view.outputRanges[output] = *fields[i].range();
    }
  });
}

} // namespace runsieve::app
