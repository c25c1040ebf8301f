#pragma once

#include <QKeySequence>
#include <QObject>

#include <functional>
#include <vector>

class QKeyEvent;
class QWidget;

namespace runsieve::app {

/// Keys with a meaning in one widget. There they go before shortcuts of the window and what the widget itself
/// would do; an editor inside of the widget keeps its keys.
class Keys : public QObject
{
  Q_OBJECT

public:
  explicit Keys(QWidget& widget);

  void on(QKeySequence const& key, std::function<void()> handler);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  struct Entry
  {
    QKeySequence key;
    std::function<void()> handler;
  };

  [[nodiscard]] Entry const* entryOf(QKeyEvent const& event) const;
  [[nodiscard]] bool isEditing() const;

  QWidget& widget;
  std::vector<Entry> entries;
};

} // namespace runsieve::app
