#include "app/cli/GatedScan.h"

#include <runsieve/core/compare/Clusters.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/read/ParametersFile.h>
#include <runsieve/core/sieve/Fingerprint.h>
#include <runsieve/core/sieve/SieveFile.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/ShownText.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace runsieve::app {

namespace {

constexpr char largestP[] = "p_threshold";
constexpr char smallestD[] = "ks_threshold";

double threshold(std::optional<double> const& own, SieveFile const& sieve, char const* name, double otherwise)
{
  auto const found = sieve.thresholds.find(name);
  if (own || found == sieve.thresholds.end()) return own.value_or(otherwise);
  if (found->second >= 0.0 && found->second <= 1.0) return found->second;
  throw std::runtime_error(std::string("the sieve file has a ") + name + " that is not in 0..1");
}

/// How to compare: by the command, else by the sieve file, else by the stored plot, else as by default.
ComparisonMethod methodOf(SieveArguments const& arguments, SieveFile const& sieve,
                          std::optional<Thresholds> const& stored)
{
  ComparisonMethod method = sieve.method.value_or(ComparisonMethod());
  Thresholds const defaults = stored.value_or(Thresholds());
  method.thresholds.largestP = threshold(arguments.pThreshold, sieve, largestP, defaults.largestP);
  method.thresholds.smallestD = threshold(arguments.ksThreshold, sieve, smallestD, defaults.smallestD);
  method.adjustment = arguments.adjust.value_or(method.adjustment);
  method.permutations = arguments.permutations.value_or(method.permutations);
  if (arguments.permutations) method.mostPermutations = method.permutations; // as many as asked for
  method.seed = arguments.seed.value_or(method.seed);
  method.gatesTried = arguments.gatesTried.value_or(method.gatesTried);
  if (method.adjustment == Adjustment::Permutation && method.permutations == 0)
    throw UsageError("--permutations 0 leaves nothing to adjust by; choose --adjust holm, bh or none");
  return method;
}

// The gates that selected the runs of a stored plot, if they still select the same ones: it holds no texts of
// parameters and no status of runs.
void takeStoredGates(GatedScan& result)
{
  OpenedScan const& opened = result.opened;
  if (opened.gates.empty() || !opened.selected) return;
  try {
    GateResult passed = applyGates(opened.gates, opened.scan, opened.join, gateContext());
    if (passed.runs != *opened.selected) throw GateError("they let other runs through");
    result.gates = opened.gates;
    result.join = opened.join;
    result.passed = std::move(passed);
  } catch (GateError const& error) {
    result.notes.push_back(std::string("the gates of the stored plot are not shown: ") + error.what());
  }
}

/// The sieve file of a command; an empty one if there is none.
SieveFile sieveOf(SieveArguments const& arguments)
{
  if (arguments.sieve.empty()) return {};
  SieveFile sieve = loadSieve(arguments.sieve);
  sieve.read = foundOptions(arguments.file, std::move(sieve.read));
  return sieve;
}

GatedScan gatedBy(OpenedScan opened, SieveArguments const& arguments, SieveFile const& sieve)
{
  GatedScan result;
  result.opened = std::move(opened);
  result.file = arguments.file;
  result.read = mergedOptions(arguments.read, sieve.read);
  std::optional<GateResult> ofSieve;
  if (!arguments.sieve.empty()) {
    ofSieve = applyGates(sieve.gates, result.scan(), sieve.join, gateContext());
    result.notes = compareWith(sieve, result.scan(), *ofSieve);
  }
  result.gates = sieve.gates;
  for (std::string const& text : arguments.gates) result.gates.push_back(parseGate(text));
  result.join = arguments.any ? GateJoin::Any : sieve.join;
  if (result.gates.empty()) takeStoredGates(result);
  result.method = methodOf(arguments, sieve, result.opened.thresholds);
  if (!sieve.gates.empty() && arguments.gates.empty() && result.join == sieve.join)
    result.passed = std::move(*ofSieve);
  else if (result.passed.gates.empty())
    result.passed = applyGates(result.gates, result.scan(), result.join, gateContext());
  if (result.gates.empty() && result.opened.selected) result.passed.runs = *result.opened.selected;
  for (AppliedGate const& gate : result.passed.gates)
    if (!gate.gate.note.empty()) result.notes.push_back(gate.gate.text() + ": " + gate.gate.note);
  if (!arguments.saveSieve.empty() && result.gates.empty() && result.opened.selected)
    throw UsageError(
        "--save-sieve: no gates made the selection of the stored plot, so there are none to save");
  return result;
}

} // namespace

RunSet GatedScan::eligibleOf(Scan const& part) const
{
  return eligibleRuns(part, gates);
}

RunSet eligibleRuns(Scan const& scan, std::vector<Gate> const& gates)
{
  bool const asksForStatus =
      std::any_of(gates.begin(), gates.end(), [](Gate const& gate) { return gate.kind == GateKind::Status; });
  return asksForStatus ? RunSet(scan.runs.size(), true) : completeRuns(scan);
}

GateContext gateContext()
{
  return {[](Scan const& scan, std::size_t output, ClusterMode mode, int clusters) {
    return clusterRuns(scan, output, mode, clusters);
  }};
}

GatedScan openGated(SieveArguments const& arguments)
{
  SieveFile const sieve = sieveOf(arguments);
  return gatedBy(openScan(arguments.file, mergedOptions(arguments.read, sieve.read)), arguments, sieve);
}

GatedScan gated(OpenedScan opened, SieveArguments const& arguments)
{
  return gatedBy(std::move(opened), arguments, sieveOf(arguments));
}

void saveSieve(GatedScan const& gated, SieveArguments const& arguments)
{
  if (!arguments.saveSieve.empty())
    saveSieve(gated, gated.gates, gated.join, gated.passed, arguments.saveSieve);
}

void saveSieve(GatedScan const& gated, std::vector<Gate> const& gates, GateJoin join,
               GateResult const& passed, std::string const& path)
{
  SieveFile sieve;
  sieve.program = "runsieve " RUNSIEVE_VERSION;
  sieve.gates = gates;
  sieve.join = join;
  Thresholds const& thresholds = gated.method.thresholds;
  sieve.thresholds = {{largestP, thresholds.largestP}, {smallestD, thresholds.smallestD}};
  sieve.method = gated.method;
  sieve.read = keptOptions(gated.file, gated.read);
  sieve.fingerprint = fingerprintOf(gated.scan());
  sieve.counts = countsOf(passed);
  writeSieve(path, sieve);
}

std::string passingText(GatedScan const& gated)
{
  return std::to_string(gated.passed.runs.count()) + " of " + std::to_string(gated.scan().runs.size()) +
         " runs pass";
}

std::string outputNames(Scan const& scan)
{
  constexpr std::size_t most = 20;
  std::string names;
  for (std::size_t i = 0; i < std::min(scan.outputs.size(), most); ++i)
    names += (i > 0 ? ", " : "") + runsieve::quoted(scan.outputs[i].label.fullName());
  if (scan.outputs.size() > most) names += " and " + std::to_string(scan.outputs.size() - most) + " more";
  return names;
}

void printNotes(GatedScan const& gated)
{
  for (std::string const& note : gated.notes) std::cerr << "runsieve: " << printable(note) << '\n';
}

} // namespace runsieve::app
