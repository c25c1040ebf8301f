#pragma once

#include "app/explorer/parameters/PassingWork.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace runsieve::app {

/// A line that tells how far a piece of work is, with a button that stops it or starts it again.
class WorkBar : public QWidget
{
  Q_OBJECT

public:
  /// \param doing "Looking for pairs" \param first what a gate is needed for, told while there is none
  WorkBar(PassingWork& work, QString doing, QString first, QWidget* parent = nullptr);

  /// What is told when the work is done.
  void setResult(QString const& text);
  [[nodiscard]] QString text() const;
  [[nodiscard]] QPushButton* button() const { return action; }

private:
  void refresh();

  PassingWork& work;
  QString doing;
  QString first;
  QString result;
  QLabel* label = nullptr;
  QProgressBar* bar = nullptr;
  QPushButton* action = nullptr;
};

} // namespace runsieve::app
