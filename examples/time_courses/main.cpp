// The panel for time courses in a window. `time_courses --pictures FOLDER` saves its two pages and ends.
#include "time_courses/TimeCourseWindow.h"

#include <runsieve/widgets/LinePlotWidget.h>
#include <runsieve/widgets/PlotSelector.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <QApplication>
#include <QDir>
#include <QSurfaceFormat>

#include <iostream>

namespace {

void selectAllMolecules(PlotSelector& selector)
{
  for (QTreeWidgetItem* group : selector.findItems("Molecule", Qt::MatchExactly))
    for (int i = 0; i < group->childCount(); ++i) group->child(i)->setSelected(true);
}

bool save(QWidget& window, QString const& file)
{
  QApplication::processEvents();
  return window.grab().save(file);
}

bool savePictures(time_courses::TimeCourseWindow& window, QString const& folder)
{
  QDir().mkpath(folder);
  bool saved = save(window, folder + "/time_courses_notice.png");
  window.simulate();
  window.panel->ui.selector->expandAll();
  selectAllMolecules(*window.panel->ui.selector);
  window.panel->toggleLegend();
  saved = save(window, folder + "/time_courses.png") && saved;
  return saved;
}

} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(VtkPlotWidget::defaultFormat());
  QApplication application(argc, argv);
  const QStringList words = QApplication::arguments();
  time_courses::TimeCourseWindow window;
  window.resize(1000, 650);
  window.show();
  if (words.size() == 3 && words[1] == "--pictures") return savePictures(window, words[2]) ? 0 : 1;
  if (words.size() > 1) {
    std::cerr << "usage: time_courses [--pictures FOLDER]\n";
    return 2;
  }
  window.simulate();
  return QApplication::exec();
}
