#include "app/scan/ScanLayout.h"

#include <optional>
#include <stdexcept>

namespace runsieve::app {

ScanLayout scanLayout(LinePlotTable const& scan)
{
  ScanLayout layout;
  std::optional<std::size_t> time;
  std::optional<std::size_t> run;
  for (std::size_t i = 0; i < scan.columnNames.size(); ++i) {
    auto const& [type, name] = scan.columnNames[i];
    if (type == Kestrane::Parameter)
      layout.parameters.push_back(i);
    else if (type != Kestrane::Unnamed)
      layout.outputs.push_back(i);
    else if (name == "Run Index")
      run = i;
    else if (!time || name == "Time [s]")
      time = i;
  }
  if (!time) throw std::invalid_argument("the scan has no time column");
  if (!run) throw std::invalid_argument("the scan has no run column");
  layout.time = *time;
  layout.run = *run;
  return layout;
}

} // namespace runsieve::app
