#pragma once

#include <QComboBox>

namespace runsieve::app {

/// A box of many names in which a part of one finds it. A text that is none of them goes back to the last
/// choice when the box is left.
class SearchableBox : public QComboBox
{
  Q_OBJECT

public:
  explicit SearchableBox(QWidget* parent = nullptr);

protected:
  void focusOutEvent(QFocusEvent* event) override;
};

} // namespace runsieve::app
