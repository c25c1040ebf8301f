#include "time_courses/TimeCourseWindow.h"

#include <runsieve/widgets/LinePlotWidget.h>

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace time_courses {

TimeCourseWindow::TimeCourseWindow(QWidget* parent) : QWidget(parent)
{
  setWindowTitle("Time courses of the repressilator");
  panel = new LinePlotWidget(this);
  halfRepression = new QDoubleSpinBox;
  halfRepression->setRange(1.0, 10000.0);
  halfRepression->setValue(40.0);
  simulateButton = new QPushButton("Simulate");
  removeButton = new QPushButton("Remove data");

  auto* controls = new QHBoxLayout;
  controls->addWidget(new QLabel("Repressors that halve transcription"));
  controls->addWidget(halfRepression);
  controls->addWidget(simulateButton);
  controls->addWidget(removeButton);
  controls->addStretch(1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(controls);
  layout->addWidget(panel, 1);
  connect(simulateButton, &QPushButton::clicked, this, &TimeCourseWindow::simulate);
  connect(removeButton, &QPushButton::clicked, panel, &LinePlotWidget::removeData);
}

TimeCourseWindow::~TimeCourseWindow() = default;

void TimeCourseWindow::simulate()
{
  TimeCourses courses(halfRepression->value());
  LinePlotData data = courses.data();
  panel->setData(&data); // copies the values
}

} // namespace time_courses
