#pragma once

#include <QByteArray>
#include <QObject>

#include <vector>

class QDockWidget;
class QMainWindow;

namespace runsieve::app {

/// Where the panes of a window stand. They are hidden as long as nothing is open; places and sizes are
/// remembered from one window to the next.
class Layout : public QObject
{
  Q_OBJECT

public:
  explicit Layout(QMainWindow& window);

  /// Adds a pane. The first of an area is at its top; one with `tabOf` shares the place of that pane.
  /// \param name of the pane in the settings
  QDockWidget* add(QString const& title, char const* name, QWidget* pane, Qt::DockWidgetArea area,
                   QDockWidget* tabOf = nullptr);
  /// Shows the panes as they were left last, or hides them all.
  void show(bool on);
  /// Shows a pane, above those that share its place.
  void bring(QWidget const& pane);
  /// Puts all panes where they are at first.
  void restore();
  /// Remembers places and sizes.
  void save();

  [[nodiscard]] std::vector<QDockWidget*> const& docks() const { return all; }

private:
  /// Where a pane stands at first.
  struct Place
  {
    QDockWidget* dock;
    Qt::DockWidgetArea area;
    QDockWidget* tabOf;
  };

  QMainWindow& window;
  std::vector<QDockWidget*> all;
  std::vector<Place> places;
  bool shown = false;
};

} // namespace runsieve::app
