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

  /// Shows the bar for a file.
  void tell(QString const& path);

Q_SIGNALS:
  void rereadWanted();

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  void elide();

  QString name;
  QLabel* text = nullptr;
  QPushButton* reread = nullptr;
};

} // namespace runsieve::app
