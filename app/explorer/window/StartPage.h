#pragma once

#include <QWidget>

class QVBoxLayout;

namespace runsieve::app {

/// What stands in a window without a scan: how to get one.
class StartPage : public QWidget
{
  Q_OBJECT

public:
  explicit StartPage(QWidget* parent = nullptr);

  /// Shows these files, the newest first, as links.
  void setRecent(QStringList const& files);

Q_SIGNALS:
  void openWanted();
  void exampleWanted();
  void fileWanted(QString const& path);

private:
  QVBoxLayout* recent = nullptr;
};

} // namespace runsieve::app
