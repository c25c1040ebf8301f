#include "app/explorer/session/SessionZoom.h"

#include <stdexcept>

namespace runsieve::app {

namespace {

TypedRange rangeOf(AxisMap const& axis)
{
  return {axis.low(), axis.high()};
}

} // namespace

void keepZoom(RunsZoom const& zoom, Document const& document, Session& session)
{
  session.view.zoomedTime.reset();
  session.view.zoomedValues.clear();
  if (!document.isOpen() || zoom.isAll()) return;
  session.view.zoomedTime = rangeOf(zoom.time());
  for (std::size_t const output : document.state().view.outputs)
    session.view.zoomedValues[document.scan().outputs[output].label.fullName()] = rangeOf(zoom.value(output));
}

void showZoom(Session const& session, Document const& document, RunsZoom& zoom)
{
  if (!document.isOpen()) return;
  auto const axisOf = [](TypedRange const& range) { return AxisMap(range.low, range.high); };
  std::optional<AxisMap> time;
  if (session.view.zoomedTime) time = axisOf(*session.view.zoomedTime);
  if (time) zoom.show(time, 0, std::nullopt);
  for (auto const& [name, range] : session.view.zoomedValues) {
    try {
      if (auto const output = document.scan().findOutput(name))
        zoom.show(std::nullopt, *output, axisOf(range));
    } catch (std::invalid_argument const&) {
      continue; // several have the name by now
    }
  }
}

} // namespace runsieve::app
