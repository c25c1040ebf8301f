#include "app/explorer/parameters/TextHold.h"

#include <algorithm>
#include <iterator>

namespace runsieve::app {

namespace {

bool hasAnyOf(ParameterSpan const& span, TextRow const& row)
{
  return row.shareIn(span.texts) != TextRow::Share::None;
}

} // namespace

TextHold::TextHold(Document const& document, ParameterSpans const& spans, std::size_t parameter,
                   TextBarRows const& inRows, QPointF const& at, Qt::KeyboardModifiers modifiers)
    : names(document.scan().parameters[parameter].texts), rows(inRows), from(rows.nearest(at))
{
  const bool control = modifiers.testFlag(Qt::ControlModifier);
  auto const here = spans.find(parameter);
  if (here != spans.end()) hold(document, here->second, control);
  takesAway = control && held && rows.at(from).shareIn(texts) == TextRow::Share::All;
  changesAtOnce = control || !held;
  if (held) return;
  begun.kind = GateKind::Is;
  begun.negated = modifiers.testFlag(Qt::ShiftModifier);
  begun.texts = {names.front()};
  begun.column = columnFor(begun, document.scan(), parameter);
}

/// Takes the gate on the first row, the selected one before others. \param asksOthers takes one of the
/// parameter if there is none on the row
void TextHold::hold(Document const& document, std::vector<ParameterSpan> const& here, bool asksOthers)
{
  ParameterSpan const* found = nullptr;
  auto const isBetter = [&](ParameterSpan const& span) {
    if (!found || span.isChosen) return true;
    return !found->isChosen && hasAnyOf(span, rows.at(from)) && !hasAnyOf(*found, rows.at(from));
  };
  for (ParameterSpan const& span : here)
    if (span.gate < document.state().gates.size() && (asksOthers || hasAnyOf(span, rows.at(from))) &&
        isBetter(span))
      found = &span;
  if (!found) return;
  held = found->gate;
  texts = found->texts;
  begun = document.state().gates[*held].gate;
}

bool TextHold::isDrag(QPointF const& to) const
{
  return changesAtOnce || rows.nearest(to) != from;
}

std::optional<Gate> TextHold::dragged(QPointF const& to) const
{
  const auto [first, last] = std::minmax({from, rows.nearest(to)});
  std::vector<std::size_t> over;
  for (std::size_t row = first; row <= last; ++row)
    over.insert(over.end(), rows.at(row).texts.begin(), rows.at(row).texts.end());
  std::sort(over.begin(), over.end());
  std::vector<std::size_t> wanted;
  if (takesAway)
    std::set_difference(texts.begin(), texts.end(), over.begin(), over.end(), std::back_inserter(wanted));
  else
    std::set_union(texts.begin(), texts.end(), over.begin(), over.end(), std::back_inserter(wanted));
  if (wanted.empty()) return std::nullopt;
  Gate gate = begun;
  gate.texts.clear();
  for (std::size_t const text : wanted) gate.texts.push_back(names[text]);
  return gate;
}

} // namespace runsieve::app
