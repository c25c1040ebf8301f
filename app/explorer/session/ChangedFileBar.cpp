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
  name = QFileInfo(path).fileName();
  text->setToolTip(toolTipText(path));
  show();
  elide();
}

void ChangedFileBar::elide()
{
  const QString told = " has changed on disk.";
  const double room = text->width() - QFontMetricsF(text->font()).horizontalAdvance(told) - 4.0;
  text->setText(elided(name, text->font(), std::max(room, 40.0)) + told);
}

void ChangedFileBar::resizeEvent(QResizeEvent* event)
{
  QWidget::resizeEvent(event);
  elide();
}

} // namespace runsieve::app
