#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/ClusterCache.h"
#include "app/explorer/document/GateOutcomes.h"
#include "app/explorer/document/GatePreview.h"
#include "app/explorer/document/PinnedRuns.h"
#include "app/explorer/document/State.h"

#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/compare/ParameterComparer.h>
#include <runsieve/core/live/LiveDistance.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/read/ReadReport.h>

#include <QObject>
#include <QUndoStack>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace runsieve::app {

/// What a scan was read from.
struct ScanSource
{
  std::string path;  ///< in the encoding of the file system; empty if it is from no file
  ReadOptions read;  ///< how it was read
  ReadReport report; ///< what the reader found
};

/// The open scan with all that the user makes of it: gates, sets, view, and what follows from them. Panes
/// show it and change it; none of them knows another.
class Document : public QObject
{
  Q_OBJECT

public:
  explicit Document(QObject* parent = nullptr);
  ~Document() override;

  /// Takes a scan with a state, in place of what was open; nothing can be undone behind that.
  void open(std::shared_ptr<Scan const> scan, ScanSource source, State state = {});
  void close();

  [[nodiscard]] bool isOpen() const { return data != nullptr; }
  /// Of the open scan.
  [[nodiscard]] Scan const& scan() const { return *data; }
  /// Shares it with work in other threads.
  [[nodiscard]] std::shared_ptr<Scan const> sharedScan() const { return data; }
  [[nodiscard]] ScanSource const& source() const { return from; }

  [[nodiscard]] State const& state() const { return current; }
  /// Changes the state, as one step that can be undone; none if the state stays as it is. \param name of the
  /// step, for the menu: "Move gate" \param merge steps that follow one another with the same number above 0
  /// become one
  void change(QString const& name, std::function<void(State&)> const& edit, int merge = 0);
  [[nodiscard]] QUndoStack& undoStack() { return steps; }

  /// One for each gate of the state.
  [[nodiscard]] std::vector<GateOutcome> const& outcomes() const { return gates.outcomes(); }
  /// Whether some gate asks for something.
  [[nodiscard]] bool sieves() const { return gates.sieves() || moving.has_value(); }
  /// Runs that pass all gates, those of a gate that is being moved at this moment.
  [[nodiscard]] RunSet const& passing() const { return moving ? moving->passing : gates.passing(); }
  /// Runs that take part in comparisons.
  [[nodiscard]] RunSet const& eligible() const { return takingPart; }

  /// The numbers of the passing runs; those of the former ones while new ones are computed or a gate is being
  /// moved; null without gates.
  [[nodiscard]] Comparison const* comparison() const { return compared.get(); }
  /// Whether these are the numbers of the passing runs.
  [[nodiscard]] bool isCompared() const { return !moving && !comparing.isBusy() && !clusters.isBusy(); }
  /// Positions of the parameters in the order of the last comparison; those that it has not, behind.
  [[nodiscard]] std::vector<std::size_t> parameterOrder() const;
  /// While a gate is being moved, one per parameter of the scan; else empty.
  [[nodiscard]] std::vector<LiveDistance> const& liveDistances() const { return distances; }

  /// Prepares gates on an output for being moved, for some milliseconds. \return whether all is prepared
  bool prepareGate(std::size_t output);
  /// Shows a gate as it would be, and what passes then. \param index of the gate of the state that it would
  /// take the place of; their number for a new one
  void previewGate(std::size_t index, Gate const& gate);
  /// The gate that is shown so, if any; null else. \param index is set to its place
  [[nodiscard]] Gate const* previewedGate(std::size_t* index = nullptr) const;
  /// Goes back to what was before the preview.
  void cancelPreview();
  /// The same, and tells those who drag: previewGivenUp().
  void giveUpPreview();
  /// Makes the previewed gate one of the state; a new one gets a name. A new gate that no run passes is given
  /// up. \return false if it was, or if there is no preview
  bool commitPreview(QString const& stepName);

  /// The run under the pointer, in whatever pane; nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> hoveredRun() const { return hovered; }
  void hover(std::optional<std::size_t> run);
  /// Runs that the user keeps an eye on, by their position.
  [[nodiscard]] std::set<std::size_t> const& pinnedRuns() const { return pinned.runs(); }
  /// The same with the numbers of their colours.
  [[nodiscard]] PinnedRuns const& pins() const { return pinned; }
  void pin(std::set<std::size_t> runs);
  void setPins(PinnedRuns runs);
  void togglePin(std::size_t run);
  /// The gate that forms and handles are for; nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> selectedGate() const { return chosenGate; }
  void selectGate(std::optional<std::size_t> index);

  /// A name for a new gate that none has: "Gate 3".
  [[nodiscard]] std::string newGateName() const;

Q_SIGNALS:
  /// Another scan, or none, is open. All else has changed with it.
  void opened();
  /// Gates, sets, method or view; passingChanged() follows if gates have.
  void stateChanged();
  /// The passing runs, by changed gates or by a gate that is being moved.
  void passingChanged();
  /// comparison(), isCompared(), or liveDistances()
  void comparisonChanged();
  /// Hovered or pinned runs, or the selected gate.
  void highlightChanged();
  /// Whoever drags a gate must stop: it was given up, or other gates have taken the place of those that the
  /// drag began with.
  void previewGivenUp();
  /// Work in another thread failed.
  void failed(QString const& message);

private:
  friend class StateStep;

  /// A gate that is being moved.
  struct Moving
  {
    std::size_t index;
    Gate gate;
    RunSet passing;
  };

  void setState(State const& state);
  void applyGates();
  void takeClusters();
  void compare();

  std::shared_ptr<Scan const> data;
  ScanSource from;
  State current;
  QUndoStack steps;
  ClusterCache clusters;
  GateOutcomes gates;
  RunSet takingPart;
  std::optional<Moving> moving;
  bool placing = false; ///< whether what was being moved becomes part of the state
  GatePreview preview;
  std::vector<LiveDistance> distances;
  std::shared_ptr<ParameterComparer const> comparer; ///< of the runs that take part; none before the first
  std::shared_ptr<Comparison const> compared;
  Background comparing;

  std::optional<std::size_t> hovered;
  PinnedRuns pinned;
  std::optional<std::size_t> chosenGate;
};

} // namespace runsieve::app
