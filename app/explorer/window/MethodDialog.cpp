#include "app/explorer/window/MethodDialog.h"

#include "app/explorer/document/Document.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QSpinBox>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace runsieve::app {

namespace {

/// What a box says. A number that it cannot show, as it has more digits or lies out of its range, stays as it
/// is until another one is typed.
template <class Box, class Value> class Kept
{
public:
  /// \param filled shows a number as well as it can
  Kept(Box* filled, Value former) : box(filled), former(former), shown(filled->value()) {}

  [[nodiscard]] Value value() const
  {
    return box->value() == shown ? former : static_cast<Value>(box->value());
  }

private:
  Box const* box;
  Value former;
  decltype(std::declval<Box>().value()) shown;
};

QDoubleSpinBox* shareBox(double value, QString const& hint)
{
  auto* box = new QDoubleSpinBox;
  box->setRange(0.0, 1.0);
  box->setDecimals(4);
  box->setSingleStep(0.01);
  box->setValue(value);
  box->setToolTip(hint);
  return box;
}

QSpinBox* countBox(std::uint64_t value, int least, int most, QString const& hint)
{
  auto* box = new QSpinBox;
  box->setRange(least, most);
  box->setValue(static_cast<int>(std::min(value, static_cast<std::uint64_t>(most))));
  box->setToolTip(hint);
  return box;
}

} // namespace

void editMethod(Document& document, QWidget* parent)
{
  constexpr int million = 1'000'000;
  const ComparisonMethod former = document.state().method;
  QDialog dialog(parent);
  dialog.setWindowTitle("Significance and method");
  auto* form = new QFormLayout(&dialog);
  auto* p = shareBox(former.thresholds.largestP, "A difference counts if its adjusted p is at most this");
  auto* d = shareBox(former.thresholds.smallestD, "and if the magnitude of d is at least this");
  auto* adjustment = new QComboBox;
  adjustment->addItem("Permutation (maxT)", static_cast<int>(Adjustment::Permutation));
  adjustment->addItem("Holm", static_cast<int>(Adjustment::Holm));
  adjustment->addItem("Benjamini and Hochberg", static_cast<int>(Adjustment::BenjaminiHochberg));
  adjustment->addItem("None", static_cast<int>(Adjustment::None));
  adjustment->setCurrentIndex(adjustment->findData(static_cast<int>(former.adjustment)));
  adjustment->setToolTip("How p-values take account of the number of parameters that are looked at");
  auto* permutations = countBox(former.permutations, 1, million,
                                "Permutations at first; more are made where p is near the threshold");
  auto* seed = countBox(former.seed, 0, 2'147'483'647, "The same seed gives the same numbers");
  auto* tried = countBox(former.gatesTried, 1, million,
                         "Sets of gates that were looked at before these were chosen, these included");
  form->addRow("Largest significant p", p);
  form->addRow("Smallest significant d", d);
  form->addRow("Adjust p by", adjustment);
  form->addRow("Permutations", permutations);
  form->addRow("Seed", seed);
  form->addRow("Sets of gates tried", tried);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  form->addRow(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(&document, &Document::opened, &dialog, &QDialog::reject);
  const Kept largestP(p, former.thresholds.largestP);
  const Kept smallestD(d, former.thresholds.smallestD);
  const Kept atFirst(permutations, former.permutations);
  const Kept seedNumber(seed, former.seed);
  const Kept gatesTried(tried, former.gatesTried);
  if (dialog.exec() != QDialog::Accepted) return;
  document.change("Change method", [&](State& state) {
    ComparisonMethod& method = state.method;
    method.thresholds = {largestP.value(), smallestD.value()};
    method.adjustment = static_cast<Adjustment>(adjustment->currentData().toInt());
    method.permutations = atFirst.value();
    method.mostPermutations = std::max(method.mostPermutations, method.permutations);
    method.seed = seedNumber.value();
    method.gatesTried = gatesTried.value();
  });
}

} // namespace runsieve::app
