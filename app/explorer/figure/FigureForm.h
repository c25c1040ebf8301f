#pragma once

#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <QWidget>

#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFontComboBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;

namespace runsieve::app {

/// All options of a figure, to be typed and chosen.
class FigureForm : public QWidget
{
  Q_OBJECT

public:
  FigureForm(FigureContent const& content, FigureOptions const& options, QWidget* parent = nullptr);

  [[nodiscard]] FigureOptions options() const;

Q_SIGNALS:
  void changed();

private:
  void buildSize(QFormLayout& form, FigureOptions const& options);
  void buildContent(QFormLayout& form, FigureContent const& content, FigureOptions const& options);
  void buildSwitches(QFormLayout& form, FigureOptions const& options);
  void takePreset(int index);
  void showPreset();
  QDoubleSpinBox* number(char const* name, char const* unit, double low, double high, double step,
                         double value);

  QComboBox* preset = nullptr;
  QDoubleSpinBox* width = nullptr;
  QDoubleSpinBox* height = nullptr;
  QSpinBox* dpi = nullptr;
  QFontComboBox* family = nullptr;
  QDoubleSpinBox* fontSize = nullptr;
  QDoubleSpinBox* lineWidth = nullptr;
  QComboBox* palette = nullptr;
  QLineEdit* title = nullptr;
  QComboBox* runsLook = nullptr;
  QComboBox* parameterLook = nullptr;
  QSpinBox* strongest = nullptr;
  std::vector<std::pair<QCheckBox*, std::size_t>> outputs; ///< with their positions
  QCheckBox* gates = nullptr;
  QCheckBox* legend = nullptr;
  QCheckBox* counts = nullptr;
  QCheckBox* thresholds = nullptr;
  QCheckBox* scaleBar = nullptr;
  QCheckBox* ground = nullptr;
  std::vector<std::size_t> listed; ///< parameters that were asked for by name
};

} // namespace runsieve::app
