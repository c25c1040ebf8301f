#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/document/ParametersPage.h"

#include <runsieve/core/sieve/SieveFile.h>

#include <QStringList>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace runsieve::app {

/// Runs that were kept under a name, by their keys.
struct SessionSet
{
  std::string name;
  std::vector<RunKey> runs;
  std::size_t color = 0;
  bool shown = true;
  std::string origin;
};

/// What a window showed, by the names of outputs and parameters: their places may be others in a file that
/// was written anew.
struct SessionView
{
  std::vector<std::string> outputs;
  std::map<std::string, bool> logOutputs;
  std::map<std::string, TypedRange> outputRanges;
  std::optional<TypedRange> timeRange;
  RunsLook runsLook = RunsLook::Density;
  Focus focus = Focus::All;
  ParameterLook parameterLook = ParameterLook::Curves;
  std::map<std::string, bool> logParameters;
  ParametersPage parametersPage = ParametersPage::Charts;
  std::optional<TypedRange> zoomedTime;           ///< part of the times that is shown
  std::map<std::string, TypedRange> zoomedValues; ///< likewise of the values of outputs
};

/// All that a user has made of a scan, to be kept in a file: names in place of positions, keys in place of
/// runs. The data are not in it.
struct Session
{
  std::string program;     ///< that wrote it
  std::string path;        ///< of the data, absolute, in UTF-8; empty if they are from no file
  std::string nearPath;    ///< the same, seen from the folder of the session
  std::string fingerprint; ///< of the data; empty if it was not known
  ReadOptions read;
  SieveCounts counts; ///< of the gates that are on
  std::vector<NamedGate> gates;
  GateJoin join = GateJoin::All;
  ComparisonMethod method;
  std::vector<SessionSet> sets;
  SessionView view;
  std::vector<RunKey> pinned;
};

/// The session of a document with a scan. \param fingerprint of the scan; if it is not given it is found out:
/// linear in the scan
[[nodiscard]] Session sessionOf(Document const& document, std::optional<std::string> fingerprint = {});

/// A session on a scan.
struct RestoredState
{
  State state;
  PinnedRuns pinned;
  QStringList notes; ///< what the scan does not have any more
};

/// What of a session a scan has.
[[nodiscard]] RestoredState restoredOn(Session const& session, Scan const& scan);

/// Opens a scan with a session in a document. \return RestoredState::notes, and gates that don't fit the scan
QStringList applySession(Document& document, Session const& session, std::shared_ptr<Scan const> const& scan,
                         ScanSource source);

/// The keys of runs: whole numbers that follow one another as one range.
[[nodiscard]] std::vector<RunKey> keysOf(RunSet const& runs, Scan const& scan);
/// The reverse. \param absent is set to what the scan does not have of the keys and ranges
[[nodiscard]] RunSet runsOf(std::vector<RunKey> const& keys, Scan const& scan,
                            std::vector<RunKey>* absent = nullptr);
/// The same in the order of the keys.
[[nodiscard]] std::vector<std::size_t> orderedRuns(std::vector<RunKey> const& keys, Scan const& scan,
                                                   std::vector<RunKey>* absent = nullptr);

} // namespace runsieve::app
