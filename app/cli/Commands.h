#pragma once

#include "app/simulate/Sampling.h"

#include <runsieve/core/compare/BoxOfRuns.h>
#include <runsieve/core/compare/ComparisonMethod.h>
#include <runsieve/core/read/ReadOptions.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve::app {

/// What was asked for makes no sense, as opposed to work that failed; the program then ends with status 2.
class UsageError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// Options of all commands that read a scan.
struct CommonOptions
{
  std::string file;
  ReadOptions read; ///< names of columns that are not found by themselves
};

struct SimulateArguments
{
  bool list = false;     ///< print the names of the models and do nothing else
  bool describe = false; ///< print what the model is and do nothing else
  std::string model;     ///< empty: the example model
  std::size_t runs = 1000;
  std::size_t times = 101;
  std::optional<std::uint64_t> seed; ///< not set: a new one each time, which is printed
  Sampling sampling = Sampling::LatinHypercube;
  std::string output; ///< "-": standard output
};

struct InfoArguments : CommonOptions
{
  std::string format = "text"; ///< "text" or "json"
};

/// Options of all commands that sieve.
struct SieveArguments : CommonOptions
{
  std::vector<std::string> gates;    ///< of the form that parseGate() reads
  bool any = false;                  ///< a run must pass one of the gates, not all
  std::string sieve;                 ///< file of gates and thresholds; gates are added to it
  std::string saveSieve;             ///< file to write them to
  std::optional<double> pThreshold;  ///< largest p-value that counts as significant; default: of the file
  std::optional<double> ksThreshold; ///< smallest statistic that counts as significant; default: of the file

  // How parameters are compared; what is not set is as in the sieve file, or as by default.
  std::optional<Adjustment> adjust;
  std::optional<std::size_t> permutations;
  std::optional<std::uint64_t> seed;
  std::optional<std::size_t> gatesTried;

  [[nodiscard]] bool hasGates() const { return !gates.empty() || !sieve.empty(); }
};

struct RankArguments : SieveArguments
{
  std::string format = "table"; ///< "table", "csv" or "json"
  bool stability = false;       ///< tell how sure the distances are, and whether there are enough runs
  std::size_t top = 0;          ///< whose membership is told; 0: as many as are significant
  std::string stabilityPicture; ///< .png, .svg or .pdf; empty: none
  int width = 1200;             ///< pixels
  int height = 900;
};

struct PairsArguments : SieveArguments
{
  std::string format = "table"; ///< "table", "csv" or "json"
  std::size_t top = 20;         ///< pairs in the table
  std::string picture;          ///< .png, .svg or .pdf; empty: none
  std::string pair;             ///< "A,B", the pair of the picture; empty: the strongest
  int width = 1200;             ///< pixels
  int height = 900;
};

struct SelectArguments : SieveArguments
{
  std::string output;           ///< list of runs, or a scan; empty or "-": standard output
  std::string format = "table"; ///< "table", "csv" or "json" of runs, or "scan"
  bool others = false;          ///< the runs that do not pass
};

/// A figure as the explorer's export makes it; what is not set is as in the session, or as by default.
struct FigureArguments
{
  bool wanted = false;             ///< else the composite view is drawn
  std::optional<double> width;     ///< mm
  std::optional<double> height;    ///< mm
  std::optional<int> dpi;          ///< of a .png, and at most that of dense runs elsewhere
  std::string font;                ///< family
  std::optional<double> fontSize;  ///< points
  std::optional<double> lineWidth; ///< points
  std::string title;
  bool noGates = false;
  bool noLegend = false;
  bool noCounts = false;
  bool noThresholds = false;
  bool noScaleBar = false;
  bool transparent = false;
  bool data = false;                    ///< writes what is behind it as CSV files beside it
  bool wholeBands = false;              ///< runs as bands of whole runs
  bool scatter = false;                 ///< of the parameters against the last value of the first output
  std::string palette;                  ///< "standard" or "colour-blind"
  std::string focus;                    ///< "all", "faded" or "hidden"
  std::optional<std::size_t> strongest; ///< how many parameters
  std::vector<std::string> parameters;  ///< these, by name
  std::vector<std::string> outputs;     ///< one above the other, by name
  std::vector<std::string> logOutputs;  ///< with a logarithmic axis
  std::string timeRange;                ///< "LOW..HIGH"
  std::vector<std::string> valueRanges; ///< "NAME in LOW..HIGH"
  std::vector<std::string> gateNames;   ///< of the gates, in their order
  std::string pins;                     ///< runs to mark, "3,5,10-15"
};

struct RenderArguments : SieveArguments
{
  std::string output; ///< the picture, .png or .pdf; a figure also .svg
  int width = 1200;   ///< pixels
  int height = 900;
  std::string
      species; ///< output on the vertical axis, by its full or bare name; empty: that of the first gate
  bool density = false;
  bool commonScale = false;
  bool quantiles = false;
  bool logAxes = false;
  bool points = false;
  bool plainLines = false;
  FigureArguments figure;
};

struct ClusterArguments : SieveArguments
{
  int clusters = 4;
  std::string mode = "curves"; ///< "curves", "phase" or "magnitude"
  std::string species;         ///< output whose runs are grouped; empty: the one on show, or the first
  std::string output;          ///< file for run numbers and clusters; empty or "-": standard output
  std::string picture;         ///< .png or .pdf; empty: none
  int width = 1200;            ///< pixels
  int height = 900;
  bool rank = false; ///< compare the parameters of each cluster with those of all other runs
};

struct BoxArguments : SieveArguments
{
  BoxMethod box;                ///< its seed aside, which is that of the sieve options
  bool knee = false;            ///< the box of the best trade-off, whatever it covers
  std::string format = "table"; ///< "table", "csv" or "json"
  std::string boxSieve;         ///< file to write the gates of the box to
  std::string picture;          ///< .png, .svg or .pdf; empty: none
  int width = 1200;             ///< pixels
  int height = 900;
};

struct ConvertArguments : SieveArguments
{
  std::string output; ///< .rsd or .csv
};

struct ExploreArguments : CommonOptions
{
  std::vector<std::string> more; ///< further files, each for a window of its own
};

// Each returns the exit status, and throws if its work fails.
int runSimulate(SimulateArguments const& arguments);
int runInfo(InfoArguments const& arguments);
int runSelect(SelectArguments const& arguments);
int runRank(RankArguments const& arguments);
int runPairs(PairsArguments const& arguments);
int runRender(RenderArguments const& arguments);
int runCluster(ClusterArguments const& arguments);
int runBox(BoxArguments const& arguments);
int runConvert(ConvertArguments const& arguments);

} // namespace runsieve::app
