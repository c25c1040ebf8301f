#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace runsieve::app {

/// A bar over the charts that says that a file has changed, and asks what to do. Hidden until then.
class ChangedFileBar : public QWidget
{
  Q_OBJECT

public:
  explicit ChangedFileBar(QWidget* parent = nullptr);

  /// Shows the bar for a file that has changed.
  void tell(QString const& path);
  /// The same for one that is not there any more, and cannot be read again.
  void tellGone(QString const& path);

Q_SIGNALS:
  void rereadWanted();

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  void show(QString const& path, QString const& what);
  void elide();

  QString name;
  QString happened;
  QLabel* text = nullptr;
  QPushButton* reread = nullptr;
};

} // namespace runsieve::app
