#include "app/explorer/window/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>

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
  QApplication::setStyle(QStyleFactory::create("Fusion"));
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
