#pragma once

#include "app/explorer/charts/TextBars.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/parameters/ColumnCounts.h"
#include "app/explorer/parameters/ParameterSpread.h"

#include <QObject>

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace runsieve::app {

/// Passing runs and the others of those that take part, along the axis of a parameter.
struct ParameterGroups
{
  ColumnCounts passing;
  ColumnCounts others;
};

/// Where the runs of the open scan stand along its parameters. What is found once is kept, for as many
/// parameters as are looked at: a gate that moves costs only the counting.
class ParameterRuns : public QObject
{
  Q_OBJECT

public:
  explicit ParameterRuns(Document& document, QObject* parent = nullptr);

  [[nodiscard]] Document& ofDocument() const { return document; }

  /// Positions of all parameters: as the last comparison orders them, and still while a gate is moved.
  [[nodiscard]] std::vector<std::size_t> const& order() const { return shownOrder; }

  /// Of a number parameter, as the next ones.
  [[nodiscard]] ParameterSpread const& spread(std::size_t parameter) const;
  /// As the user wants it, else as the values are spread.
  [[nodiscard]] bool isLogarithmic(std::size_t parameter) const;
  /// From the lowest to the highest value.
  [[nodiscard]] AxisMap axis(std::size_t parameter) const;
  [[nodiscard]] RunColumns const& columns(std::size_t parameter) const;
  /// Whether columns() is known already.
  [[nodiscard]] bool isPlaced(std::size_t parameter) const;
  /// If nothing is sieved, all runs are others.
  [[nodiscard]] ParameterGroups groups(std::size_t parameter) const;
  /// Of a text parameter.
  [[nodiscard]] TextGroups textGroups(std::size_t parameter) const;

  /// 1 per run that takes part and passes; all 0 if nothing is sieved.
  [[nodiscard]] std::vector<std::uint8_t> const& passing() const { return passingMask; }
  /// 1 per run that takes part.
  [[nodiscard]] std::vector<std::uint8_t> const& eligible() const { return eligibleMask; }
  /// Another number whenever these are other runs.
  [[nodiscard]] std::uint64_t version() const { return groupsNumber; }

Q_SIGNALS:
  /// Another scan is open.
  void opened();
  /// The groups, the axes or what is marked.
  void changed();
  void orderChanged();

private:
  struct Placed
  {
    bool logarithmic = false;
    std::uint64_t used = 0; ///< when it was asked for last
    RunColumns columns;
    ColumnCounts eligible;
    std::uint64_t countedFor = 0; ///< the set of eligible runs
  };

  void reopen();
  void takeGroups();
  void regroup();
  void reorder();
  [[nodiscard]] Placed& placed(std::size_t parameter) const;

  Document& document;
  std::vector<std::size_t> shownOrder;
  std::vector<std::uint8_t> passingMask;
  std::vector<std::uint8_t> eligibleMask;
  std::uint64_t eligibleNumber = 1; ///< counts the sets of eligible runs
  std::uint64_t groupsNumber = 1;   ///< counts the sets of passing and eligible runs
  mutable std::map<std::size_t, ParameterSpread> spreads;
  mutable std::map<std::size_t, Placed> known;
  mutable std::uint64_t clock = 0;
};

} // namespace runsieve::app
