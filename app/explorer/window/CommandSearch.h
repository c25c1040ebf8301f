#pragma once

#include <QDialog>
#include <QList>

class QAction;
class QLineEdit;
class QListWidget;

namespace runsieve::app {

/// Finds an action by parts of its name, of what it does, or of its menu, and triggers it.
class CommandSearch : public QDialog
{
  Q_OBJECT

public:
  /// \param actions those that there are; disabled ones are shown, but cannot be chosen
  explicit CommandSearch(QList<QAction*> actions, QWidget* parent = nullptr);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void find(QString const& words);
  void choose();

  QList<QAction*> actions;
  QLineEdit* words = nullptr;
  QListWidget* found = nullptr;
};

} // namespace runsieve::app
