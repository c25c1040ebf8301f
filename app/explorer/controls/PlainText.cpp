#include "app/explorer/controls/PlainText.h"

#include <runsieve/core/text/ShownText.h>

#include <QMessageBox>

namespace runsieve::app {

QString shownText(std::string const& text)
{
  return QString::fromStdString(printable(text));
}

QString plural(std::size_t count, QString const& one)
{
  return count == 1 ? "1 " + one : QString("%L1 %2s").arg(count).arg(one);
}

QString toolTipText(QString const& text)
{
  return text.isEmpty() ? text : "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
}

QString menuText(QString text)
{
  return text.replace('&', "&&");
}

void tellFailure(QWidget* parent, QString const& title, QString const& message)
{
  constexpr int most = 1000;
  QMessageBox box(QMessageBox::Warning, "Runsieve", title, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setInformativeText(
      toolTipText(message.size() > most ? message.left(most) + QString::fromUtf8("\u2026") : message));
  box.exec();
}

} // namespace runsieve::app
