#pragma once

#include <QMenu>

namespace runsieve::app {

/// The files that were opened last, as a menu that is up to date whenever it is shown.
class RecentMenu : public QMenu
{
  Q_OBJECT

public:
  explicit RecentMenu(QWidget* parent);

Q_SIGNALS:
  void fileWanted(QString const& path);

private:
  void fill();
};

} // namespace runsieve::app
