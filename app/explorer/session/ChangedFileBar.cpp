#include "app/explorer/session/ChangedFileBar.h"

#include "app/explorer/charts/Theme.h"
#include "app/explorer/controls/PlainText.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace runsieve::app {

ChangedFileBar::ChangedFileBar(QWidget* parent) : QWidget(parent)
{
  setAccessibleName("The file has changed");
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  text = new QLabel;
  text->setTextFormat(Qt::PlainText);
  text->setForegroundRole(QPalette::ToolTipText);
  text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  reread = new QPushButton("Reread");
  reread->setToolTip("Read the file again and keep gates, sets and view");
  auto* ignore = new QPushButton("Ignore");
  ignore->setToolTip("Go on with what was read");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(10, 4, 6, 4);
  row->addWidget(text, 1);
  row->addWidget(reread);
  row->addWidget(ignore);
  connect(reread, &QPushButton::clicked, this, [this] {
    hide();
    Q_EMIT rereadWanted();
  });
  connect(ignore, &QPushButton::clicked, this, &QWidget::hide);
  hide();
}

void ChangedFileBar::tell(QString const& path)
{
  reread->show();
  show(path, " has changed on disk.");
}

void ChangedFileBar::tellGone(QString const& path)
{
  reread->hide();
  show(path, " is not there any more. What was read stays.");
}

void ChangedFileBar::show(QString const& path, QString const& what)
{
  name = QFileInfo(path).fileName();
  happened = what;
  text->setToolTip(toolTipText(path));
  QWidget::show();
  elide();
}

void ChangedFileBar::elide()
{
  const double room = text->width() - QFontMetricsF(text->font()).horizontalAdvance(happened) - 4.0;
  text->setText(elided(name, text->font(), std::max(room, 40.0)) + happened);
}

void ChangedFileBar::resizeEvent(QResizeEvent* event)
{
  QWidget::resizeEvent(event);
  elide();
}

} // namespace runsieve::app
