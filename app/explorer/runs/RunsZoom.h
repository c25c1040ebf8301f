#pragma once

#include "app/explorer/charts/AxisMap.h"
#include "app/explorer/document/Document.h"
#include "app/explorer/runs/Extents.h"

#include <QElapsedTimer>
#include <QObject>

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

namespace runsieve::app {

/// What part of the times and of the values of each output the charts of the runs show: all charts the same
/// times. Goes back and forward through what was shown.
class RunsZoom : public QObject
{
  Q_OBJECT

public:
  explicit RunsZoom(Document& document, QObject* parent = nullptr);

  [[nodiscard]] AxisMap time() const;
  [[nodiscard]] AxisMap value(std::size_t output) const;
  [[nodiscard]] Extents const& extents() const { return known; }

  /// Shows a part; what is left out stays. Steps that follow one another soon, as those of a wheel, are taken
  /// back as one.
  void show(std::optional<AxisMap> const& time, std::size_t output, std::optional<AxisMap> const& value);
  /// Shows all, of all outputs.
  void reset();
  [[nodiscard]] bool isAll() const;
  [[nodiscard]] bool canGoBack() const { return !former.empty(); }
  [[nodiscard]] bool canGoForward() const { return !later.empty(); }
  void back();
  void forward();

Q_SIGNALS:
  void changed();

private:
  struct Part
  {
    std::optional<TypedRange> time;
    std::map<std::size_t, TypedRange> values;
  };

  void reopen();
  void remember();

  Document& document;
  Extents known;
  Part shown;
  std::vector<Part> former;
  std::vector<Part> later;
  QElapsedTimer sinceStep;
};

} // namespace runsieve::app
