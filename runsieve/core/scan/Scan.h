#pragma once

#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace runsieve {

/// What a column is called. Only the name is always there.
struct ColumnLabel
{
  std::string name;  ///< as the file has it, in UTF-8: "A", "Values[k1]", "[S]"
  std::string unit;  ///< "min"; empty if the file tells none
  std::string label; ///< a longer name for people; empty if the file tells none
  std::string type;  ///< kind of an output in Runsieve's own files ("Molecule"); empty for free names

  /// Type, ": " and name; the name alone without a type.
  [[nodiscard]] RUNSIEVE_CORE_EXPORT std::string fullName() const;
};

/// How a run ended.
enum class RunStatus : std::uint8_t
{
  Complete, ///< a finite value of every output at every time
  Short,    ///< ends before the last time of the scan; has finite values until then
  Failed    ///< said to have failed by the file, or holds a missing or infinite value of some output
};

/// "complete", "short" or "failed".
[[nodiscard]] RUNSIEVE_CORE_EXPORT char const* statusName(RunStatus status);

/// One run of a scan.
struct ScanRun
{
  std::string key; ///< its number or name in the file ("17", "WT_003"); different for each run of a scan
  RunStatus status = RunStatus::Complete;
  std::size_t end = 0; ///< times until its last value, at most those of the scan
};

/// The runs and times of one output.
struct ScanOutput
{
  ColumnLabel label;
  /// Runs x times values, the times of a run in a row. NaN where a run has none. Shared, so that a host can
  /// lend memory of its own.
  std::shared_ptr<double[]> values;
};

/// One value per run.
struct ScanParameter
{
  ColumnLabel label;
  std::vector<double> values;     ///< one per run, NaN if missing; of a text parameter its number in texts
  std::vector<std::string> texts; ///< the different texts in the order of their first run; empty: numbers

  [[nodiscard]] bool isText() const { return !texts.empty(); }
};

/// A parameter scan: runs of a model, each with one value of every parameter, and the time courses of its
/// outputs on one time grid.
///
/// A plain record. Readers and adapters keep what is said here; check() tells a host that fills one itself.
/// Independent objects may be used from several threads.
struct RUNSIEVE_CORE_EXPORT Scan
{
  Scan() = default;
  Scan(Scan&&) = default;
  Scan& operator=(Scan&&) = default;
  Scan(Scan const&) = delete; ///< scans take gigabytes
  Scan& operator=(Scan const&) = delete;

  ColumnLabel time;          ///< name and unit of the time
  std::vector<double> times; ///< the time grid: finite, strictly rising, not empty
  std::vector<ScanRun> runs;
  std::vector<ScanOutput> outputs;
  std::vector<ScanParameter> parameters;

  /// Rows of a table that stacks all runs.
  [[nodiscard]] std::size_t rows() const { return runs.size() * times.size(); }

  /// Appends an output with room for rows() values, which are not initialised. Call it when times and runs
  /// are complete. The pointer stays valid as long as the values are shared.
  double* addOutput(ColumnLabel label);

  /// The values of an output in one run, one per time.
  [[nodiscard]] double const* valuesOf(std::size_t output, std::size_t run) const
  {
    return outputs[output].values.get() + run * times.size();
  }

  /// Position of an output or a parameter by its full name, or by its bare name if that is unique. Nothing
  /// if there is none; \throw std::invalid_argument if several have the bare name, naming them
  [[nodiscard]] std::optional<std::size_t> findOutput(std::string const& name) const;
  [[nodiscard]] std::optional<std::size_t> findParameter(std::string const& name) const;
  /// Position of a run by its key.
  [[nodiscard]] std::optional<std::size_t> findRun(std::string const& key) const;

  /// Sets end and status of every run from the values of the outputs: what ends early becomes Short, what
  /// holds a missing or infinite value before its end Failed. A run that is Failed already stays so.
  void findStatus();

  /// \throw std::invalid_argument that says what does not hold of the rules above
  void check() const;
};

} // namespace runsieve
