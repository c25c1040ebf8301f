#pragma once

#include "app/explorer/parameters/BoxLimits.h"
#include "app/explorer/parameters/BoxPathChart.h"
#include "app/explorer/parameters/PassingWork.h"
#include "app/explorer/parameters/WorkBar.h"

#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;

namespace runsieve::app {

/// The box of parameters that holds many of the passing runs and few others.
class BoxPage : public QWidget
{
  Q_OBJECT

public:
  explicit BoxPage(ParameterRuns& runs, QWidget* parent = nullptr);

  /// Adds the limits to the gates, in one step. \return how many were added
  std::size_t useAsGates();

  [[nodiscard]] PassingWork& work() { return search; }
  [[nodiscard]] WorkBar* bar() const { return progress; }
  [[nodiscard]] BoxLimits* limits() const { return ranges; }
  [[nodiscard]] QPushButton* gatesButton() const { return use; }
  /// What is told of the box.
  [[nodiscard]] QString words() const;

protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

private:
  void take(std::shared_ptr<BoxOfRuns const> found);

  Document& document;
  PassingWork search;
  std::shared_ptr<BoxOfRuns const> box;
  WorkBar* progress = nullptr;
  QLabel* told = nullptr;
  BoxLimits* ranges = nullptr;
  BoxPathChart* path = nullptr;
  QPushButton* use = nullptr;
};

/// Coverage, density and mass of a box in words.
[[nodiscard]] QString boxWords(BoxOfRuns const& box);

} // namespace runsieve::app
