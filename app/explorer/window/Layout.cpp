#include "app/explorer/window/Layout.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QSettings>
#include <QTabBar>

namespace runsieve::app {

namespace {

constexpr int version = 1; ///< of the set of panes: a layout of another one would leave some without a place
constexpr char key[] = "layout";

} // namespace

Layout::Layout(QMainWindow& ofWindow) : QObject(&ofWindow), window(ofWindow)
{
  window.setDockNestingEnabled(true);
  window.setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  for (Qt::Corner const corner : {Qt::TopLeftCorner, Qt::BottomLeftCorner})
    window.setCorner(corner, Qt::LeftDockWidgetArea);
  for (Qt::Corner const corner : {Qt::TopRightCorner, Qt::BottomRightCorner})
    window.setCorner(corner, Qt::RightDockWidgetArea);
}

QDockWidget* Layout::add(QString const& title, char const* name, QWidget* pane, Qt::DockWidgetArea area,
                         QDockWidget* tabOf)
{
  auto* dock = new QDockWidget(title, &window);
  dock->setObjectName(name);
  dock->setWidget(pane);
  dock->hide();
  all.push_back(dock);
  places.push_back({dock, area, tabOf});
  return dock;
}

void Layout::show(bool on)
{
  if (on == shown) return;
  if (!on) save();
  shown = on;
  if (!on) {
    for (QDockWidget* dock : all) dock->hide();
    return;
  }
  restore();
  window.restoreState(QSettings().value(key).toByteArray(), version);
}

void Layout::restore()
{
  if (!shown) return;
  for (Place const& place : places) {
    place.dock->setFloating(false);
    window.addDockWidget(place.area, place.dock);
    if (place.tabOf) window.tabifyDockWidget(place.tabOf, place.dock);
    place.dock->show();
  }
  for (Place const& place : places)
    if (!place.tabOf) place.dock->raise();
  const int right = window.width() / 3;
  const int bottom = window.height() / 5;
  for (Place const& place : places) {
    if (place.tabOf) continue;
    if (place.area == Qt::BottomDockWidgetArea)
      window.resizeDocks({place.dock}, {bottom}, Qt::Vertical);
    else
      window.resizeDocks({place.dock}, {right}, Qt::Horizontal);
  }
}

void Layout::bring(QWidget const& pane)
{
  for (QDockWidget* dock : all) {
    if (dock->widget() != &pane) continue;
    dock->show();
    dock->raise();
  }
}

void Layout::save()
{
  if (shown) QSettings().setValue(key, window.saveState(version));
}

} // namespace runsieve::app
