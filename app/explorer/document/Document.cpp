#include "app/explorer/document/Document.h"

#include "app/cli/GatedScan.h"
#include "app/explorer/document/StateStep.h"

#include <algorithm>
#include <utility>

namespace runsieve::app {

namespace {

std::vector<Gate> gatesThatAreOn(State const& state)
{
  std::vector<Gate> on;
  for (NamedGate const& gate : state.gates)
    if (gate.on) on.push_back(gate.gate);
  return on;
}

bool sameGates(State const& a, State const& b)
{
  auto const same = [](NamedGate const& x, NamedGate const& y) { return x.on == y.on && x.gate == y.gate; };
  return a.join == b.join && std::equal(a.gates.begin(), a.gates.end(), b.gates.begin(), b.gates.end(), same);
}

/// Leaves out what a scan does not have.
void fitToScan(ViewState& view, Scan const& scan)
{
  auto const isGone = [&](std::size_t output) { return output >= scan.outputs.size(); };
  view.outputs.erase(std::remove_if(view.outputs.begin(), view.outputs.end(), isGone), view.outputs.end());
  if (view.outputs.empty() && !scan.outputs.empty()) view.outputs = {0};
  if (view.outputs.size() > ViewState::mostOutputs) view.outputs.resize(ViewState::mostOutputs);
}

} // namespace

Document::Document(QObject* parent) : QObject(parent)
{
  connect(&comparing, &Background::failed, this, &Document::failed);
  connect(&comparing, &Background::busyChanged, this, &Document::comparisonChanged);
  connect(&clusters, &ClusterCache::found, this, &Document::takeClusters);
}

Document::~Document()
{
  comparing.disconnect(this);
  clusters.disconnect(this);
}

void Document::open(std::shared_ptr<Scan const> scan, ScanSource source, State state)
{
  comparing.cancel();
  steps.clear();
  moving.reset();
  hovered.reset();
  pinned = {};
  chosenGate.reset();
  comparer.reset();
  compared.reset();
  data = std::move(scan);
  from = std::move(source);
  current = std::move(state);
  clusters.reset(data);
  gates.reset(data.get(), clusters.context());
  if (data) fitToScan(current.view, *data);
  takingPart = {};
  preview.reset(nullptr, {});
  applyGates();
  Q_EMIT opened();
  Q_EMIT stateChanged();
  Q_EMIT passingChanged();
  compare();
}

void Document::close()
{
  open(nullptr, {});
}

void Document::change(QString const& name, std::function<void(State&)> const& edit, int merge)
{
  if (!data) return;
  State after = current;
  edit(after);
  fitToScan(after.view, *data);
  if (after == current) return;
  steps.push(new StateStep(*this, name, std::move(after), merge));
}

void Document::setState(State const& state)
{
  const bool regate = !sameGates(current, state);
  const bool recompare = !sameMethod(current.method, state.method);
  current = state;
  if (chosenGate && *chosenGate >= current.gates.size()) chosenGate.reset();
  if (regate) {
    moving.reset();
    if (!placing) Q_EMIT previewGivenUp();
    applyGates();
  }
  Q_EMIT stateChanged();
  if (regate) Q_EMIT passingChanged();
  if (regate || recompare) compare();
}

void Document::applyGates()
{
  preview.forgetOthers();
  distances.clear();
  if (!data) return;
  gates.apply(current.gates, current.join);
  RunSet eligible = eligibleRuns(*data, gatesThatAreOn(current));
  if (eligible == takingPart) return;
  takingPart = std::move(eligible);
  preview.reset(data.get(), takingPart);
  comparer.reset();
}

void Document::takeClusters()
{
  gates.retryFaults();
  applyGates();
  Q_EMIT stateChanged();
  Q_EMIT passingChanged();
  compare();
}

void Document::compare()
{
  if (!data || !gates.sieves()) {
    comparing.cancel();
    compared.reset();
    Q_EMIT comparisonChanged();
    return;
  }
  comparing.start([this, scan = data, known = comparer, eligible = takingPart, passing = gates.passing(),
                   method = current.method](Background::Cancelled const& cancelled) -> std::function<void()> {
    ComparisonWork work;
    work.cancelled = cancelled;
    auto const comparer = known ? known : std::make_shared<ParameterComparer const>(*scan, eligible);
    auto result = std::make_shared<Comparison const>(comparer->compare(passing, method, work));
    return [this, scan, comparer, result] {
      if (data != scan) return;
      if (comparer->eligible() == takingPart) this->comparer = comparer;
      compared = result;
    };
  });
}

std::vector<std::size_t> Document::parameterOrder() const
{
  std::vector<std::size_t> order;
  if (!data) return order;
  if (compared)
    for (ParameterComparison const& parameter : compared->parameters) order.push_back(parameter.parameter);
  for (std::size_t i = 0; i < data->parameters.size(); ++i)
    if (std::find(order.begin(), order.end(), i) == order.end()) order.push_back(i);
  return order;
}

bool Document::prepareGate(std::size_t output)
{
  return preview.prepare(output);
}

void Document::previewGate(std::size_t index, Gate const& gate)
{
  if (!data) return;
  const bool isOff = index < current.gates.size() && !current.gates[index].on;
  try {
    const ResolvedGate resolved = resolveGate(gate, *data);
    moving = Moving{index, gate, isOff ? gates.passing() : preview.passing(index, resolved, gates)};
  } catch (GateError const&) {
    cancelPreview(); // one that does not fit the scan, or takes time to be known
    return;
  }
  if (!isOff)
    if (auto found = preview.newDistances()) {
      distances = std::move(*found);
      Q_EMIT comparisonChanged();
    }
  Q_EMIT passingChanged();
}

Gate const* Document::previewedGate(std::size_t* index) const
{
  if (moving && index) *index = moving->index;
  return moving ? &moving->gate : nullptr;
}

void Document::cancelPreview()
{
  if (!moving) return;
  moving.reset();
  preview.forgetOthers();
  distances.clear();
  Q_EMIT passingChanged();
  Q_EMIT comparisonChanged();
}

void Document::giveUpPreview()
{
  cancelPreview();
  Q_EMIT previewGivenUp();
}

bool Document::commitPreview(QString const& stepName)
{
  if (!moving) return false;
  if (moving->index >= current.gates.size() &&
      runsThrough(resolveGate(moving->gate, *data), *data, clusters.context()).count() == 0) {
    cancelPreview();
    return false;
  }
  const Moving placed = std::move(*moving);
  moving.reset();
  placing = true;
  change(stepName, [&](State& state) {
    if (placed.index < state.gates.size())
      state.gates[placed.index].gate = placed.gate;
    else
      state.gates.push_back({newGateName(), placed.gate, true});
  });
  placing = false;
  selectGate(std::min(placed.index, current.gates.size() - 1));
  return true;
}

void Document::hover(std::optional<std::size_t> run)
{
  if (run == hovered) return;
  hovered = run;
  Q_EMIT highlightChanged();
}

void Document::pin(std::set<std::size_t> runs)
{
  if (runs == pinned.runs()) return;
  pinned.set(std::move(runs));
  Q_EMIT highlightChanged();
}

void Document::setPins(PinnedRuns runs)
{
  pinned = std::move(runs);
  Q_EMIT highlightChanged();
}

void Document::togglePin(std::size_t run)
{
  std::set<std::size_t> changed = pinned.runs();
  if (changed.erase(run) == 0) changed.insert(run);
  pin(std::move(changed));
}

void Document::selectGate(std::optional<std::size_t> index)
{
  if (index && *index >= current.gates.size()) index.reset();
  if (index == chosenGate) return;
  chosenGate = index;
  Q_EMIT highlightChanged();
}

std::string Document::newGateName() const
{
  for (std::size_t number = current.gates.size() + 1;; ++number) {
    std::string name = "Gate " + std::to_string(number);
    auto const has = [&](NamedGate const& gate) { return gate.name == name; };
    if (std::none_of(current.gates.begin(), current.gates.end(), has)) return name;
  }
}

} // namespace runsieve::app
