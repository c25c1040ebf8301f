#include "app/explorer/parameters/GateHand.h"

#include <utility>

namespace runsieve::app {

void GateHand::take(std::unique_ptr<GateHold> hold, QPointF const& at, QPointF const& origin)
{
  cancel();
  held = std::move(hold);
  zero = origin;
  moving = false;
  if (!held) return;
  if (held->gate()) document.selectGate(held->gate());
  follow(at);
}

bool GateHand::follow(QPointF const& to)
{
  if (!held || (!moving && !held->isDrag(to - zero))) return false;
  const std::optional<Gate> gate = held->dragged(to - zero);
  if (!gate) return moving;
  moving = true;
  document.previewGate(held->gate().value_or(document.state().gates.size()), *gate);
  return true;
}

GateHand::End GateHand::finish()
{
  if (!held) return End::Click;
  const std::unique_ptr<GateHold> done = std::move(held);
  if (!moving) return done->gate() ? End::ClickOnGate : End::Click;
  return document.commitPreview(done->stepName()) ? End::Changed : End::Nothing;
}

void GateHand::cancel()
{
  if (!held) return;
  held.reset();
  if (moving) document.cancelPreview();
}

QString GateHand::wordsFor(Document const& document)
{
  return QString("%L1 of %L2 runs pass").arg(document.passing().count()).arg(document.scan().runs.size());
}

QString GateHand::wordsFor(End end)
{
  return end == End::Nothing ? QString("No run passes there: nothing has changed") : QString();
}

} // namespace runsieve::app
