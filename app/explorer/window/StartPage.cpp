#include "app/explorer/window/StartPage.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/window/Icons.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace runsieve::app {

StartPage::StartPage(QWidget* parent) : QWidget(parent)
{
  constexpr int iconSize = 64;
  auto* icon = new QLabel;
  icon->setPixmap(programIcon().pixmap(iconSize, iconSize));
  auto* title = new QLabel("<h2>Which parameters made these runs different?</h2>");
  auto* hint = new QLabel("Open a parameter scan, drag over the places that runs must pass through,\n"
                          "and see which parameters set them apart.");
  constexpr int narrow = 280; // the page must not keep a window large when something else is shown
  setMinimumSize(narrow, 100);
  title->setWordWrap(true);
  hint->setWordWrap(true);
  auto* open = new QPushButton("Open a scan...");
  open->setDefault(true);
  auto* example = new QPushButton("Try the example");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(open);
  buttons->addWidget(example);
  buttons->addStretch(1);
  auto* drop = new QLabel("or drop a file or a folder here");
  drop->setEnabled(false);
  recent = new QVBoxLayout;
  auto* column = new QVBoxLayout;
  for (QWidget* widget :
       {static_cast<QWidget*>(icon), static_cast<QWidget*>(title), static_cast<QWidget*>(hint)})
    column->addWidget(widget);
  column->addSpacing(12);
  column->addLayout(buttons);
  column->addWidget(drop);
  column->addSpacing(18);
  column->addLayout(recent);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addLayout(column);
  row->addStretch(1);
  auto* page = new QWidget;
  auto* middle = new QVBoxLayout(page);
  middle->addStretch(1);
  middle->addLayout(row);
  middle->addStretch(2);
  auto* scroll = new QScrollArea; // for windows that are low, or letters that are large
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setWidget(page);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll);
  connect(open, &QPushButton::clicked, this, &StartPage::openWanted);
  connect(example, &QPushButton::clicked, this, &StartPage::exampleWanted);
}

void StartPage::setRecent(QStringList const& files)
{
  while (QLayoutItem* item = recent->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  if (files.isEmpty()) return;
  recent->addWidget(new QLabel("<b>Recent files</b>"));
  const QStringList names = RecentFiles::namesOf(files);
  for (int i = 0; i < files.size(); ++i) {
    const QString file = files[i];
    auto* link = new QPushButton(menuText(names[i]));
    link->setFlat(true);
    link->setStyleSheet("text-align: left");
    link->setToolTip(RecentFiles::tipOf(file));
    link->setEnabled(QFileInfo::exists(file));
    connect(link, &QPushButton::clicked, this, [this, file] { Q_EMIT fileWanted(file); });
    recent->addWidget(link);
  }
}

} // namespace runsieve::app
