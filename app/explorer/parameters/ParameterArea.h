#pragma once

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/GateHand.h"
#include "app/explorer/parameters/ParameterRuns.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <memory>
#include <optional>

namespace runsieve::app {

/// A scrolled view of all parameters in their order: one of them is the one that keys act on, gates are drawn
/// in it, and each has a menu. What it looks like is the matter of those that inherit it.
class ParameterArea : public QAbstractScrollArea
{
  Q_OBJECT

public:
  ParameterArea(ParameterRuns& runs, QString const& name, QWidget* parent);

  /// The parameter that keys act on; nothing without parameters.
  [[nodiscard]] std::optional<std::size_t> current() const;
  /// Scrolls it into view.
  void setCurrent(std::size_t parameter);

Q_SIGNALS:
  /// The user wants a parameter's chart large.
  void chosen(std::size_t parameter);
  /// For the status bar; empty if there is nothing to tell.
  void told(QString const& text);

protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

  /// Places everything anew: another order, size or theme.
  virtual void relayout() = 0;
  /// The gates, the groups or what is marked have changed.
  virtual void refresh() = 0;
  /// Another scan is open.
  virtual void reset();
  [[nodiscard]] virtual Theme themeOf(QWidget const& widget) const;
  /// The parameter at a place of the viewport.
  [[nodiscard]] virtual std::optional<std::size_t> parameterAt(QPointF const& at) const = 0;
  /// The part of the viewport that a parameter takes, and more.
  [[nodiscard]] virtual QRectF placeOf(std::size_t parameter) const = 0;
  /// What a button there would hold; null if a click means something else.
  [[nodiscard]] virtual std::unique_ptr<GateHold> holdAt(QPointF const& at, std::size_t parameter,
                                                         Qt::KeyboardModifiers modifiers) = 0;
  /// Zero of the pixels of such a hold.
  [[nodiscard]] virtual QPointF originOf(std::size_t parameter) const;
  /// The pointer has moved, and no button is down.
  virtual void hoverAt(QPointF const& at) = 0;
  /// What the tooltip there tells; empty: nothing.
  [[nodiscard]] virtual QString tipAt(QPointF const& at) = 0;
  /// How far a key moves in the order; 0 if it doesn't.
  [[nodiscard]] virtual int stepOf(int key) const;

  [[nodiscard]] std::size_t placeInOrder(std::size_t parameter) const;
  void scrollTo(QRectF const& place);

  ParameterRuns& runs;
  Document& document;
  Theme theme;
  ParameterSpans spans;
  GateHand hand;

private:
  void move(int by);
  /// Ends a drag as if it had not begun.
  void giveUp();

  std::optional<std::size_t> chosenParameter;
  std::optional<std::size_t> pressed; ///< parameter that a button is down on
};

} // namespace runsieve::app
