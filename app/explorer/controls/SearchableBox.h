#pragma once

#include <QComboBox>

namespace runsieve::app {

/// A box of many names in which a part of one finds it: Return takes the first that holds what was typed. A
/// text that is in none of them goes back to the last choice then, and when the box is left.
class SearchableBox : public QComboBox
{
  Q_OBJECT

public:
  explicit SearchableBox(QWidget* parent = nullptr);

protected:
  void focusOutEvent(QFocusEvent* event) override;

private:
  void takeTyped();
  void restore();
};

} // namespace runsieve::app
