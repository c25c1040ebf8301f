#include "app/cli/Commands.h"

#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"
#include "app/desk/Desk.h"

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/files/SafeFile.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/ShownText.h>
#include <runsieve/core/write/RowWriter.h>
#include <runsieve/core/write/WriteScan.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <stdexcept>

namespace runsieve::app {

namespace {

ClusterMode modeOf(std::string const& mode)
{
  if (mode == "phase") return ClusterMode::Phase;
  return mode == "magnitude" ? ClusterMode::Magnitude : ClusterMode::Curves;
}

/// Lines "run,cluster" with the runs as the file names them.
std::string labelText(Scan const& scan, std::vector<int> const& labels)
{
  std::string text = "run,cluster\n";
  for (std::size_t i = 0; i < labels.size(); ++i) {
    std::string const& key = scan.runs[i].key;
    text += (parseNumber(key) ? key : quotedField(key)) + ',' + std::to_string(labels[i]) + '\n';
  }
  return text;
}

void writeLabels(std::string const& path, std::string const& text)
{
  if (path.empty() || path == "-") {
    std::cout << text;
    return;
  }
  SafeFile file(path);
  file.write(text);
  file.commit();
}

/// Over all clusters there is a p-value by permutation only, whatever the single clusters are adjusted by.
void printDifferences(ClusterComparison const& comparison)
{
  bool const isAdjusted = comparison.method.adjustment == Adjustment::Permutation;
  std::size_t width = 9;
  for (ClusterDifference const& d : comparison.differences) width = std::max(width, shownWidth(d.name));
  std::cout << "\nall clusters, by permutation\nparameter" << std::string(width - 9, ' ')
            << "  cluster       d          p     " << (isAdjusted ? " p adj" : "p perm") << '\n';
  for (ClusterDifference const& d : comparison.differences) {
    std::cout << printable(d.name) << std::string(width - std::min(width, shownWidth(d.name)), ' ') << "  ";
    std::cout << std::setw(7) << d.cluster << "  " << std::setw(6) << formatted(d.d, "%+.3f", "-") << "  "
              << std::setw(9) << pText(d.p) << "  " << std::setw(9) << pText(d.pPermutation)
              << (d.significant ? " *" : "") << '\n';
  }
}

void print(ClusterComparison const& comparison, std::vector<int> const& labels)
{
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  for (std::size_t k = 0; k < comparison.clusters.size(); ++k) {
    if (sizes[k] == 0) continue;
    std::cout << "\ncluster " << k << ": " << sizes[k] << " of " << labels.size() << " runs\n";
    printRankTable(std::cout, comparison.clusters[k], comparison.method.adjustment);
  }
  if (!comparison.differences.empty()) printDifferences(comparison);
  std::cout << '\n';
  printMethod(std::cout, comparison.method, comparison.family, comparison.permutations, comparison.noiseFloor,
              comparison.isSettled);
}

void checkFiles(ClusterArguments const& arguments)
{
  if (!arguments.picture.empty() && !isPictureName(arguments.picture))
    throw UsageError("cluster: the name of the picture must end in .png or .pdf");
  checkOutputs("cluster", arguments, {arguments.output, arguments.picture});
}

std::size_t chosenOutput(ClusterArguments const& arguments, OpenedScan const& opened)
{
  if (arguments.species.empty()) return opened.output;
  if (auto const output = opened.scan.findOutput(arguments.species)) return *output;
  throw std::runtime_error(arguments.file + ": the scan has no output " +
                           runsieve::quoted(arguments.species) + "; there are " + outputNames(opened.scan));
}

} // namespace

int runCluster(ClusterArguments const& arguments)
{
  checkFiles(arguments);
  GatedScan gated = openGated(arguments);
  std::size_t const output = chosenOutput(arguments, gated.opened);
  if (arguments.hasGates()) {
    if (gated.passed.runs.count() == 0) failWithoutRuns(gated, arguments.file);
    printGates(std::cerr, gated);
    gated.opened.scan = subsetOf(gated.scan(), gated.passed.runs);
  }
  Scan const& scan = gated.scan();
  const std::vector<int> labels = clusterRuns(scan, output, modeOf(arguments.mode), arguments.clusters);
  if (labels.empty()) throw std::runtime_error(arguments.file + ": the runs cannot be grouped");
  ClusterComparison comparison;
  if (arguments.rank) comparison = compareClusters(scan, labels, gated.method);
  if (arguments.rank && comparison.leftOut.size() == scan.parameters.size())
    throw std::runtime_error(arguments.file + ": no parameter varies, so there is nothing to rank");
  writeLabels(arguments.output, labelText(scan, labels));
  if (arguments.rank) print(comparison, labels);
  if (!arguments.picture.empty()) desk().drawClusters(arguments, scan, output, gated.method);
  return 0;
}

} // namespace runsieve::app
