#include "app/explorer/parameters/PlainTip.h"

#include <QToolTip>

namespace runsieve::app {

void showPlainTip(QPoint const& at, QString const& text, QWidget* widget)
{
  QToolTip::showText(at, "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>", widget);
}

void hidePlainTip()
{
  QToolTip::hideText();
}

} // namespace runsieve::app
