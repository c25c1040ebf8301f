#pragma once

#include "app/explorer/document/State.h"

#include <QUndoCommand>

namespace runsieve::app {

class Document;

/// One step of a user, which can be undone: the state before and after it.
class StateStep : public QUndoCommand
{
public:
  /// \param merge steps with the same number above 0 become one
  StateStep(Document& document, QString const& name, State after, int merge);

  void undo() override;
  void redo() override;
  [[nodiscard]] int id() const override { return merge > 0 ? merge : -1; }
  bool mergeWith(QUndoCommand const* later) override;

private:
  Document& document;
  State before;
  State after;
  int merge;
};

} // namespace runsieve::app
