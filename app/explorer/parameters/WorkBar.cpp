#include "app/explorer/parameters/WorkBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

namespace runsieve::app {

WorkBar::WorkBar(PassingWork& ofWork, QString whatIsDone, QString whatFirst, QWidget* parent)
    : QWidget(parent), work(ofWork), doing(std::move(whatIsDone)), first(std::move(whatFirst))
{
  label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(120);
  label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar = new QProgressBar;
  bar->setRange(0, 0);
  bar->setTextVisible(false);
  bar->setFixedWidth(110);
  bar->setAccessibleName(doing);
  action = new QPushButton;
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(label, 1);
  row->addWidget(bar);
  row->addWidget(action);
  connect(action, &QPushButton::clicked, this, [this] {
    if (work.stage() == PassingWork::Stage::Working)
      work.stop();
    else
      work.startAgain();
  });
  connect(&work, &PassingWork::changed, this, &WorkBar::refresh);
  refresh();
}

void WorkBar::setResult(QString const& text)
{
  result = text;
  refresh();
}

QString WorkBar::text() const
{
  return label->text();
}

void WorkBar::refresh()
{
  using Stage = PassingWork::Stage;
  const Stage stage = work.stage();
  bar->setVisible(stage == Stage::Working);
  action->setVisible(stage == Stage::Working || stage == Stage::Stopped);
  action->setText(stage == Stage::Working ? "Stop" : "Start again");
  switch (stage) {
  case Stage::NoGate:
    return label->setText("Draw a gate first: " + first);
  case Stage::NoRuns:
    return label->setText("There is nothing to compare: no run passes, or all do.");
  case Stage::Waiting:
  case Stage::Working:
    return label->setText(doing + " ...");
  case Stage::Stopped:
    return label->setText(work.fault().isEmpty() ? QString("Stopped.")
                                                 : "This cannot be done: " + work.fault());
  case Stage::Done:
    return label->setText(result);
  }
}

} // namespace runsieve::app
