#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/parameters/ColumnCounts.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace runsieve::app {

/// The last value of the first shown output in each run, against which parameters are shown.
class OutputFeature
{
public:
  explicit OutputFeature(Document const& document) : document(document) {}

  /// Takes what the document shows; what is known already stays. \return false without an output
  bool update();

  [[nodiscard]] AxisMap const& axis() const { return shown; }
  /// Another number whenever what is known has changed.
  [[nodiscard]] std::uint64_t version() const { return number; }
  /// One per run, in rows of the axis from its low end.
  [[nodiscard]] RunColumns const& rows() const { return places; }
  /// "last B (nM)"
  [[nodiscard]] QString title() const;

private:
  Document const& document;
  std::shared_ptr<Scan const> scan; ///< what follows is of
  std::size_t output = 0;
  bool logarithmic = false;
  std::uint64_t number = 0;
  AxisMap shown;
  RunColumns places;
};

} // namespace runsieve::app
