#include "app/explorer/window/Appearance.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QSettings>
#include <QStyleOption>

namespace runsieve::app {

namespace {

constexpr char key[] = "appearance";

QPalette paletteOf(QColor const& window, QColor const& base, QColor const& text, QColor const& faint)
{
  const QColor highlight(46, 126, 196);
  QPalette palette(text, window, window.lighter(150), window.darker(160), window.darker(120), text, Qt::white,
                   base, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Button, window.lighter(112));
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Link, highlight.lighter(120));
  palette.setColor(QPalette::PlaceholderText, faint);
  for (QPalette::ColorRole const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, faint);
  return palette;
}

/// Fusion, whose boxes to tick have sides that are seen on a dark ground as well.
class ClearFusion : public QProxyStyle
{
public:
  ClearFusion() : QProxyStyle("Fusion") {}

  void drawPrimitive(PrimitiveElement element, QStyleOption const* option, QPainter* painter,
                     QWidget const* widget) const override
  {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorCheckBox && element != PE_IndicatorItemViewItemCheck) return;
    constexpr double pallor = 0.55;
    QColor side = option->palette.color(QPalette::Text);
    side.setAlphaF(pallor);
    painter->save();
    painter->setPen(side);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }

  /// The button for what has no room in a toolbar, in the colour of texts.
  QIcon standardIcon(StandardPixmap which, QStyleOption const* option, QWidget const* widget) const override
  {
    if (which != SP_ToolBarHorizontalExtensionButton) return QProxyStyle::standardIcon(which, option, widget);
    constexpr int side = 32;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(QPalette::ButtonText), 3.5, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    for (double const left : {7.0, 17.0})
      painter.drawPolyline(QPolygonF({{left, 8.0}, {left + 8.0, 16.0}, {left, 24.0}}));
    return pixmap;
  }
};

QPalette darkPalette()
{
  return paletteOf(QColor(43, 46, 52), QColor(30, 32, 37), QColor(226, 228, 232), QColor(128, 133, 142));
}

QPalette lightPalette()
{
  return paletteOf(QColor(239, 239, 239), Qt::white, QColor(20, 22, 25), QColor(140, 143, 148));
}

/// The palette of the desktop, before any other was set.
QPalette const& desktopPalette()
{
  static const QPalette palette = QApplication::palette();
  return palette;
}

void apply(Appearance appearance)
{
  QPalette const& desktop = desktopPalette();
  if (appearance == Appearance::Desktop) {
    QApplication::setPalette(desktop);
    return;
  }
  // Other styles draw parts in colours of their own.
  QApplication::setStyle(new ClearFusion); // the application owns it
  QApplication::setPalette(appearance == Appearance::Dark ? darkPalette() : lightPalette());
}

} // namespace

Appearance chosenAppearance()
{
  const QString chosen = QSettings().value(key).toString();
  return chosen == "dark" ? Appearance::Dark : chosen == "light" ? Appearance::Light : Appearance::Desktop;
}

void chooseAppearance(Appearance appearance)
{
  char const* const names[] = {"desktop", "light", "dark"};
  QSettings().setValue(key, names[static_cast<int>(appearance)]);
  apply(appearance);
}

void applyChosenAppearance()
{
  desktopPalette();
  if (chosenAppearance() != Appearance::Desktop) apply(chosenAppearance());
}

} // namespace runsieve::app
