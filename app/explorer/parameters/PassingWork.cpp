#include "app/explorer/parameters/PassingWork.h"

#include <utility>

namespace runsieve::app {

PassingWork::PassingWork(Document& ofDocument, Compute toCompute, std::function<void()> toForget,
                         QObject* parent)
    : QObject(parent), document(ofDocument), compute(std::move(toCompute)), forget(std::move(toForget))
{
  connect(&document, &Document::opened, this, [this] {
    work.cancel();
    seen = nullptr;
    isOutdated = true;
    isStopped = false;
    isDone = false;
    forget();
    follow();
  });
  connect(&document, &Document::comparisonChanged, this, &PassingWork::follow);
  connect(&document, &Document::passingChanged, this, &PassingWork::changed);
  connect(&work, &Background::busyChanged, this, &PassingWork::changed);
  connect(&work, &Background::failed, this, [this](QString const& text) {
    message = text;
    isStopped = true;
    Q_EMIT changed();
  });
}

PassingWork::~PassingWork()
{
  work.disconnect(this);
}

bool PassingWork::hasBothSides() const
{
  Comparison const* comparison = document.comparison();
  return comparison && comparison->passing > 0 && comparison->others > 0;
}

PassingWork::Stage PassingWork::stage() const
{
  if (!document.isOpen() || !document.sieves()) return Stage::NoGate;
  if (document.isCompared() && !hasBothSides()) return Stage::NoRuns;
  if (isStopped) return Stage::Stopped;
  if (work.isBusy()) return Stage::Working;
  return isDone && !isOutdated && document.isCompared() ? Stage::Done : Stage::Waiting;
}

void PassingWork::setWanted(bool looks)
{
  wanted = looks;
  follow();
}

void PassingWork::follow()
{
  // Each comparison is another object, and the former one is there until the next one is.
  if (document.isCompared() && document.comparison() != seen) {
    seen = document.comparison();
    isOutdated = true;
    isStopped = false;
    message.clear();
    work.cancel();
    if (!hasBothSides()) {
      isDone = false;
      forget();
    }
  }
  if (wanted && isOutdated && !isStopped && document.isCompared() && hasBothSides()) begin();
  Q_EMIT changed();
}

void PassingWork::begin()
{
  isOutdated = false;
  isDone = false;
  Task task{document.sharedScan(), document.passing(), document.eligible(), document.state().method,
            std::make_shared<Comparison const>(*document.comparison())};
  task.passing &= task.eligible;
  work.start([this, task = std::move(task), compute = compute,
              of = seen](Background::Cancelled const& cancelled) -> std::function<void()> {
    ComparisonWork how;
    how.cancelled = cancelled;
    return [this, take = compute(task, how), scan = task.scan, of] {
      if (document.sharedScan() != scan || seen != of) return;
      take();
      isDone = true;
      Q_EMIT changed();
    };
  });
}

void PassingWork::stop()
{
  if (!work.isBusy()) return;
  isStopped = true;
  isOutdated = true;
  work.cancel();
  Q_EMIT changed();
}

void PassingWork::startAgain()
{
  isStopped = false;
  message.clear();
  follow();
}

} // namespace runsieve::app
