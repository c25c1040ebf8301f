#include "app/explorer/document/StateStep.h"

#include "app/explorer/document/Document.h"

#include <utility>

namespace runsieve::app {

StateStep::StateStep(Document& document, QString const& name, State after, int merge)
    : QUndoCommand(name), document(document), before(document.state()), after(std::move(after)), merge(merge)
{}

void StateStep::undo()
{
  document.setState(before);
}

void StateStep::redo()
{
  document.setState(after);
}

bool StateStep::mergeWith(QUndoCommand const* later)
{
  after = static_cast<StateStep const*>(later)->after; // of the same id, so of the same class
  return true;
}

} // namespace runsieve::app
