#pragma once

#include <runsieve/runsieve_export.h>

#include <QtGlobal>

class PlotSelector;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QSpacerItem;
class QSplitter;
class QStackedWidget;
class QWidget;
class VtkPlotWidget;

/// The parts of a LinePlotWidget. All belong to the widget that setupUi() was given.
struct RUNSIEVE_EXPORT Ui_LinePlotWidgetClass
{
  QGridLayout* gridLayout = nullptr;
  QSplitter* splitter = nullptr;
  QStackedWidget* stackedWidget = nullptr;
  QWidget* page_no_data = nullptr;
  QGridLayout* gridLayout_2 = nullptr;
  QLabel* label = nullptr;
  VtkPlotWidget* plotter = nullptr;
  PlotSelector* selector = nullptr;
  QHBoxLayout* horizontalLayout = nullptr;
  QSpacerItem* horizontalSpacer = nullptr;
  QPushButton* exportButton = nullptr;
  QPushButton* showLegend = nullptr;
  QPushButton* logSButton = nullptr;

  void setupUi(QWidget* form);
  void retranslateUi(QWidget* form);
};
