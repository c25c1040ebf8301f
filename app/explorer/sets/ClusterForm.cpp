#include "app/explorer/sets/ClusterForm.h"

#include "app/explorer/controls/SearchableBox.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace runsieve::app {

char const* modeName(ClusterMode mode)
{
  switch (mode) {
  case ClusterMode::Phase:
    return "phase";
  case ClusterMode::Magnitude:
    return "magnitude";
  default:
    return "curves";
  }
}

ClusterForm::ClusterForm(Document& document, QWidget* parent) : QDialog(parent)
{
  setWindowTitle("Group runs by shape");
  Scan const& scan = document.scan();
  output = new SearchableBox;
  output->setAccessibleName("Output");
  output->setToolTip("The output whose shape counts; type a part of its name to find it");
  for (ScanOutput const& each : scan.outputs) output->addItem(QString::fromStdString(each.label.name));
  output->setCurrentIndex(static_cast<int>(document.state().view.outputs.front()));
  mode = new QComboBox;
  mode->addItems({"curves", "phase of the oscillation", "strength of the oscillation"});
  mode->setAccessibleName("Shape");
  mode->setToolTip("What the shape of a run is: its time course, or the phase or magnitude of its Fourier "
                   "transform");
  count = new QSpinBox;
  count->setRange(2,
                  std::max(2, static_cast<int>(std::min<std::size_t>(scan.runs.size(), Gate::mostClusters))));
  constexpr int usual = 4;
  count->setValue(usual);
  count->setAccessibleName("Clusters");
  count->setToolTip("How many groups are made");
  auto* explained = new QLabel("Each group becomes a set. Runs are alike if their curves correlate, however "
                               "large they are; runs that are constant join the first group.");
  explained->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText("Group");
  auto* form = new QFormLayout;
  form->addRow("&Output", output);
  form->addRow("&Shape", mode);
  form->addRow("&Clusters", count);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(explained, 1);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(&document, &Document::opened, this, &QDialog::reject);
  resize(fontMetrics().averageCharWidth() * 55, sizeHint().height());
}

ClusterRequest ClusterForm::request() const
{
  return {static_cast<std::size_t>(std::max(0, output->currentIndex())),
          static_cast<ClusterMode>(mode->currentIndex()), count->value()};
}

} // namespace runsieve::app
