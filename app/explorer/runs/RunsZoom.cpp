#include "app/explorer/runs/RunsZoom.h"

#include <utility>

namespace runsieve::app {

namespace {

constexpr qint64 oneStep = 400; ///< ms within which a further step of a wheel belongs to the one before
constexpr std::size_t mostSteps = 100;

TypedRange rangeOf(AxisMap const& axis)
{
  return {axis.low(), axis.high()};
}

} // namespace

RunsZoom::RunsZoom(Document& ofDocument, QObject* parent) : QObject(parent), document(ofDocument)
{
  connect(&document, &Document::opened, this, &RunsZoom::reopen);
  connect(&document, &Document::stateChanged, this, &RunsZoom::changed);
  reopen();
}

void RunsZoom::reopen()
{
  known.reset(document.sharedScan());
  shown = {};
  former.clear();
  later.clear();
  Q_EMIT changed();
}

AxisMap RunsZoom::time() const
{
  if (shown.time) return {shown.time->low, shown.time->high};
  if (auto const& typed = document.state().view.timeRange) return {typed->low, typed->high};
  return known.timeAxis();
}

AxisMap RunsZoom::value(std::size_t output) const
{
  ViewState const& view = document.state().view;
  auto const log = view.logOutputs.find(output);
  const bool logarithmic =
      log != view.logOutputs.end() && log->second && known.of(output).lowestPositive > 0.0;
  auto const part = shown.values.find(output);
  if (part != shown.values.end()) return {part->second.low, part->second.high, logarithmic};
  auto const typed = view.outputRanges.find(output);
  if (typed != view.outputRanges.end()) return {typed->second.low, typed->second.high, logarithmic};
  return known.axis(output, logarithmic);
}

void RunsZoom::remember()
{
  const bool continues = sinceStep.isValid() && sinceStep.elapsed() < oneStep;
  sinceStep.start();
  if (continues) return;
  former.push_back(shown);
  if (former.size() > mostSteps) former.erase(former.begin());
  later.clear();
}

void RunsZoom::show(std::optional<AxisMap> const& time, std::size_t output,
                    std::optional<AxisMap> const& value)
{
  remember();
  if (time) shown.time = rangeOf(*time);
  if (value) shown.values[output] = rangeOf(*value);
  Q_EMIT changed();
}

void RunsZoom::reset()
{
  if (isAll()) return;
  sinceStep.invalidate();
  remember();
  sinceStep.invalidate();
  shown = {};
  Q_EMIT changed();
}

bool RunsZoom::isAll() const
{
  return !shown.time && shown.values.empty();
}

void RunsZoom::back()
{
  if (former.empty()) return;
  later.push_back(std::exchange(shown, former.back()));
  former.pop_back();
  sinceStep.invalidate();
  Q_EMIT changed();
}

void RunsZoom::forward()
{
  if (later.empty()) return;
  former.push_back(std::exchange(shown, later.back()));
  later.pop_back();
  sinceStep.invalidate();
  Q_EMIT changed();
}

} // namespace runsieve::app
