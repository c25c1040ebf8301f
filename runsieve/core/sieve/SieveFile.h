#pragma once

#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/read/ReadOptions.h>
#include <runsieve/core/runsieve_core_export.h>
#include <runsieve/core/scan/Scan.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runsieve {

/// What gates left of a scan when a sieve was written.
struct SieveCounts
{
  std::size_t runs = 0;               ///< of the scan; 0: nothing was counted
  std::optional<std::size_t> passing; ///< through all gates, joined; nothing if it was not counted
  std::vector<std::size_t> afterGate; ///< left after each gate, AppliedGate::left
};

/// A gate that is kept and asks for nothing.
struct GateThatIsOff
{
  Gate gate;
  std::string name;
  std::size_t place = 0; ///< in the list of all gates, those that are on among them
};

/// A set of gates with all that is needed to apply it to the same data again, and to tell whether they are
/// the same. docs/sieve_file.md describes the file.
struct SieveFile
{
  std::string program; ///< name and version of the program that wrote it
  std::vector<Gate> gates;
  std::vector<std::string> names; ///< of the gates, one for each; empty if they have none
  std::vector<GateThatIsOff> off; ///< by rising place
  GateJoin join = GateJoin::All;
  std::map<std::string, double> thresholds; ///< by name: "p_threshold", "ks_threshold"
  /// How parameters were compared, but for its thresholds, which stand above; nothing in files of programs
  /// that had no choice.
  std::optional<ComparisonMethod> method;
  ReadOptions read;         ///< how the data were read; without threads and progress
  std::string fingerprint;  ///< fingerprintOf() the data; empty if not known
  std::string path;         ///< of the data, seen from the folder of the sieve file; empty if not known
  std::string absolutePath; ///< likewise, from the root
  SieveCounts counts;
  /// What a window showed: a JSON object that the core carries and does not look into; empty if there is
  /// none.
  std::string window;
};

/// The text of a sieve file. \throw GateError, or std::invalid_argument if a text is not UTF-8 or the window
/// is no JSON
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::string toSieveText(SieveFile const& sieve);

/// Reads the text of a sieve file of this version or an older one. Unknown members are passed over.
/// \param file its name, for messages
/// \throw ScanError that names the line of a text that is no JSON, and otherwise the member that is wrong
[[nodiscard]] RUNSIEVE_CORE_EXPORT SieveFile readSieve(std::string_view text,
                                                       std::string const& file = "sieve");

/// Writes a sieve file, which takes the place of a former one when it is complete. \throw ScanError
RUNSIEVE_CORE_EXPORT void writeSieve(std::string const& path, SieveFile const& sieve);

/// Reads a sieve file. \throw ScanError
[[nodiscard]] RUNSIEVE_CORE_EXPORT SieveFile loadSieve(std::string const& path);

/// Options for reading the data of a sieve: those that are set, and in place of the others those of the
/// sieve. \param own other members than those that a sieve file keeps stay as they are
[[nodiscard]] RUNSIEVE_CORE_EXPORT ReadOptions mergedOptions(ReadOptions own, ReadOptions const& ofSieve);

/// What applyGates() left, to be written.
[[nodiscard]] RUNSIEVE_CORE_EXPORT SieveCounts countsOf(GateResult const& result);

/// How a scan differs from the one that the sieve was written for, a line for each difference: its data, its
/// number of runs, and what the gates leave of it. A gate that does not fit the scan is told in a line too.
/// Empty if all is the same. \param names what the lines call the gates, one for each; none: their numbers
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::string>
compareWith(SieveFile const& sieve, Scan const& scan, GateContext const& context = {},
            std::vector<std::string> const& names = {});
/// The same if it is known already what the gates of the sieve leave of the scan.
[[nodiscard]] RUNSIEVE_CORE_EXPORT std::vector<std::string>
compareWith(SieveFile const& sieve, Scan const& scan, GateResult const& left);

} // namespace runsieve
