#include "app/cli/Commands.h"

#include "app/cli/AlignedTable.h"
#include "app/cli/GatedScan.h"
#include "app/cli/GateReport.h"
#include "app/cli/OutputFiles.h"
#include "app/cli/RankReport.h"
#include "app/desk/Desk.h"

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/ShownText.h>
#include <runsieve/core/write/RowWriter.h>
#include <runsieve/core/write/WriteScan.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>

namespace runsieve::app {

namespace {

constexpr std::size_t mostName = 45; // as in the tables of the clusters

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

/// Over all clusters there is a p-value by permutation only, whatever the single clusters are adjusted by.
void printDifferences(ClusterComparison const& comparison)
{
  bool const isAdjusted = comparison.method.adjustment == Adjustment::Permutation;
  std::vector<std::vector<std::string>> rows = {
      {"parameter", "cluster", "d", "p", isAdjusted ? "p adj  " : "p perm  "}};
  for (ClusterDifference const& d : comparison.differences)
    rows.push_back({shortened(printable(d.name), mostName), std::to_string(d.cluster),
                    formatted(d.d, "%+.3f", "-"), pText(d.p),
                    pText(d.pPermutation) + (d.significant ? " *" : "  ")});
  std::cout << "\nall clusters, by permutation\n";
  printAligned(std::cout, rows, 1);
}

void print(ClusterComparison const& comparison, std::vector<int> const& labels)
{
  const std::vector<std::size_t> sizes = clusterSizes(labels);
  if (comparison.compared < labels.size()) std::cout << '\n';
  printNotCompared(std::cout, labels.size() - comparison.compared);
  for (std::size_t k = 0; k < comparison.clusters.size(); ++k) {
    if (comparison.clusters[k].empty()) continue;
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
  checkPictureName("cluster", arguments.picture);
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
  GatedScan const gated = openGated(arguments);
  std::size_t const output = chosenOutput(arguments, gated.opened);
  std::optional<Scan> passing;
  if (arguments.hasGates()) {
    if (gated.passed.runs.count() == 0) failWithoutRuns(gated, arguments.file);
    printGates(std::cerr, gated);
    passing = subsetOf(gated.scan(), gated.passed.runs);
  }
  Scan const& scan = passing ? *passing : gated.scan();
  const std::vector<int> labels = clusterRuns(scan, output, modeOf(arguments.mode), arguments.clusters);
  if (labels.empty()) throw std::runtime_error(arguments.file + ": the runs cannot be grouped");
  RunSet const eligible = gated.eligibleOf(scan);
  ClusterComparison comparison;
  if (arguments.rank) comparison = compareClusters(scan, labels, eligible, gated.method);
  if (arguments.rank && comparison.leftOut.size() == scan.parameters.size())
    failWithoutParameters(arguments.file, eligible, "there is nothing to rank");
  saveSieve(gated, arguments);
  writeText(arguments.output, labelText(scan, labels));
  if (arguments.rank) print(comparison, labels);
  if (!arguments.picture.empty()) desk().drawClusters(arguments, scan, {output, eligible, gated.method});
  return 0;
}

} // namespace runsieve::app
