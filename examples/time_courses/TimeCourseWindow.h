#pragma once

#include "time_courses/TimeCourses.h"

#include <QWidget>

class LinePlotWidget;
class QDoubleSpinBox;
class QPushButton;

namespace time_courses {

/// A host of the panel: simulates a model with a parameter that the user sets, and shows or removes the
/// result.
class TimeCourseWindow : public QWidget
{
  Q_OBJECT

public:
  explicit TimeCourseWindow(QWidget* parent = nullptr);
  ~TimeCourseWindow() override;

  /// Simulates with the present parameter and shows the result.
  void simulate();

  LinePlotWidget* panel = nullptr;
  QDoubleSpinBox* halfRepression = nullptr;
  QPushButton* simulateButton = nullptr;
  QPushButton* removeButton = nullptr;
};

} // namespace time_courses
