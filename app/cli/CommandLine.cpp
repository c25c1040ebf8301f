#include "app/cli/CommandLine.h"

#include "app/cli/FigureGrammar.h"
#include "app/scan/OpenScan.h"
#include "app/store/FileEnding.h"

#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/text/FieldText.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>

namespace runsieve::app {

namespace {

constexpr char gateHelp[] = "What runs must fulfil, such as \"A @ 10..12 in 2..5\", \"ever A in 3..\", \"k1 "
                            "in 1..2\"; may be repeated";

// Bad syntax of a gate is bad usage, and told before a large file is read.
std::string checkGate(std::string const& text)
{
  try {
    (void)parseGate(text);
    return {};
  } catch (GateError const& error) {
    return error.what();
  }
}

// The conversion of CLI11 takes -1 for the largest number there is.
std::string checkSeed(std::string const& text)
{
  std::uint64_t seed = 0;
  char const* const end = text.data() + text.size();
  auto const [last, error] = std::from_chars(text.data(), end, seed);
  return error == std::errc() && last == end ? std::string() : "a seed is a whole number of at most 64 bits";
}

// No comparison refuses NaN, so that CLI::Range takes it.
std::string checkNumber(std::string const& text)
{
  return std::isnan(std::strtod(text.c_str(), nullptr)) ? text + " is no number" : std::string();
}

// A peel of no runs would never end, and one of all leaves nothing.
std::string checkPeel(std::string const& text)
{
  char* end = nullptr;
  double const share = std::strtod(text.c_str(), &end);
  bool const isShare = *end == '\0' && share > 0.0 && share < 1.0;
  return isShare ? std::string() : text + " is no share between 0 and 1";
}

CLI::Option* addNames(CLI::App& command, std::string const& flags, std::vector<std::string>& names,
                      std::string const& help)
{
  return command.add_option(flags, names, help)
      ->type_name("NAME")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

// A check whose message names the words, without the values behind them.
CLI::Validator oneOf(std::map<std::string, char> const& words)
{
  return CLI::Validator(
      [words](std::string& text) {
        auto const found = words.find(text);
        if (found != words.end()) {
          text = std::string(1, found->second);
          return std::string();
        }
        std::string message = "expected one of";
        for (auto const& word : words) message += ' ' + word.first;
        return message + ", found " + runsieve::quoted(text);
      },
      "");
}

std::vector<std::string> splitAtCommas(std::string const& text)
{
  std::vector<std::string> parts(1);
  for (char const c : text)
    if (c == ',')
      parts.emplace_back();
    else
      parts.back() += c;
  return parts;
}

constexpr char readGroup[] = "How to read the file";

// The names with "-column" are those of former versions.
void addColumnOptions(CLI::App& command, ReadOptions& read)
{
  command.add_option("--time,--time-column", read.time, "Name of the time column")
      ->type_name("NAME")
      ->group(readGroup);
  command.add_option("--run,--run-column", read.run, "Name of the column that tells the runs apart")
      ->type_name("NAME")
      ->group(readGroup);
  command
      .add_option_function<std::vector<std::string>>(
          "--parameter,--parameter-column", [&](auto const& names) { read.parameters = names; },
          "Name of a parameter column; the other columns are outputs then; may be repeated")
      ->type_name("NAME")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->group(readGroup);
  addNames(command, "--output", read.outputs, "Name of an output that may stay constant; may be repeated")
      ->group(readGroup);
  addNames(command, "--ignore", read.ignore, "Name of a column to leave out; may be repeated")
      ->group(readGroup);
  command
      .add_option_function<std::string>(
          "--names", [&](std::string const& names) { read.names = splitAtCommas(names); },
          "Names of all columns, for a file without them: a,b,c")
      ->type_name("NAMES")
      ->group(readGroup);
}

void addTextOptions(CLI::App& command, ReadOptions& read)
{
  addNames(command, "--missing", read.missing, "A text or number that means \"no value\"; may be repeated")
      ->type_name("TEXT")
      ->group(readGroup);
  std::map<std::string, char> const decimals = {{".", '.'}, {",", ','}};
  command.add_option("--decimal", read.decimal, "Decimal sign: . or ,")
      ->transform(oneOf(decimals))
      ->type_name("SIGN")
      ->group(readGroup);
  std::map<std::string, char> const delimiters = {{"tab", '\t'},      {"blank", ' '}, {"comma", ','},
                                                  {"semicolon", ';'}, {"pipe", '|'},  {",", ','},
                                                  {";", ';'},         {"|", '|'}};
  command
      .add_option("--delimiter", read.delimiter,
                  "Divider of the fields: tab, blank, comma, semicolon or pipe")
      ->transform(oneOf(delimiters))
      ->type_name("SIGN")
      ->group(readGroup);
  command.add_option("--dataset", read.dataset, "Data set or array to read, of an HDF5 or npz file")
      ->type_name("PATH")
      ->group(readGroup);
  command
      .add_option("--parameters", read.parametersFile, "Table of the parameters of each run, joined by run")
      ->type_name("FILE")
      ->group(readGroup);
  command.add_flag("--exact-times", read.exactTimes, "Keep the times of each run as they are")
      ->group(readGroup);
}

void addReadOptions(CLI::App& command, CommonOptions& options, bool needsFile)
{
  auto* file = command.add_option("file", options.file, "Scan: text, NumPy or HDF5 file, or a stored plot");
  if (needsFile) file->required();
  addColumnOptions(command, options.read);
  addTextOptions(command, options.read);
}

void addGates(CLI::App& command, SieveArguments& arguments)
{
  command.add_option("-g,--gate", arguments.gates, gateHelp)
      ->type_name("GATE")
      ->check(CLI::Validator(checkGate, ""))
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  command.add_flag("--any", arguments.any, "A run must pass one of the gates, not all");
  command
      .add_option("--sieve", arguments.sieve,
                  "Sieve file, whose gates, thresholds and method are applied first")
      ->type_name("FILE");
}

template <class Arguments> void addPictureSize(CLI::App& command, Arguments& arguments)
{
  command.add_option("--width", arguments.width, "Width in pixels")
      ->capture_default_str()
      ->check(CLI::Range(64, 16384));
  command.add_option("--height", arguments.height, "Height in pixels")
      ->capture_default_str()
      ->check(CLI::Range(64, 16384));
}

constexpr char methodGroup[] = "How to compare parameters";

void addAdjustment(CLI::App& command, SieveArguments& arguments)
{
  command
      .add_option_function<std::string>(
          "--adjust", [&](std::string const& name) { arguments.adjust = adjustmentNamed(name); },
          "p-value that decides: by permutation (the default), holm, bh or none")
      ->check(CLI::IsMember({"permutation", "holm", "bh", "none"}).description(""))
      ->type_name("WAY")
      ->group(methodGroup);
}

/// \param leastPermutations 0 where p-values can do without
void addPermutations(CLI::App& command, SieveArguments& arguments, std::size_t leastPermutations)
{
  command
      .add_option(
          "--permutations", arguments.permutations,
          "Permutations of the runs; default: 1000, and up to 10000 where a p-value is near the threshold")
      ->check(CLI::Range(leastPermutations, std::size_t(1000000)).description(""))
      ->type_name("N")
      ->group(methodGroup);
  command.add_option("--seed", arguments.seed, "Start of the random numbers; default: 1")
      ->check(CLI::Validator(checkSeed, ""))
      ->type_name("SEED")
      ->group(methodGroup);
  command
      .add_option("--gates-tried", arguments.gatesTried,
                  "Sets of gates that were looked at before these were chosen, these included; default: 1")
      ->check(CLI::Range(std::size_t(1), std::size_t(1000000)).description(""))
      ->type_name("N")
      ->group(methodGroup);
}

void addSaveSieve(CLI::App& command, SieveArguments& arguments)
{
  command
      .add_option("--save-sieve", arguments.saveSieve,
                  "Write gates, thresholds, method and counts to this sieve file")
      ->type_name("FILE");
}

void addPThreshold(CLI::App& command, SieveArguments& arguments)
{
  command
      .add_option("--p-threshold", arguments.pThreshold,
                  "Largest adjusted p-value that counts as significant; default: 0.05, or that of the file")
      ->check(CLI::Range(0.0, 1.0))
      ->check(CLI::Validator(checkNumber, ""))
      ->type_name("P");
}

void addSelectionOptions(CLI::App& command, SieveArguments& arguments)
{
  addGates(command, arguments);
  addSaveSieve(command, arguments);
  addPThreshold(command, arguments);
  command
      .add_option("--ks-threshold", arguments.ksThreshold,
                  "Smallest magnitude of d that counts as significant; default: 0.1, or that of the file")
      ->check(CLI::Range(0.0, 1.0))
      ->check(CLI::Validator(checkNumber, ""))
      ->type_name("D");
  addAdjustment(command, arguments);
  addPermutations(command, arguments, 0);
}

constexpr char boxGroup[] = "How to look for the box";

/// The grammar of the program, and the records that it fills.
class Grammar
{
public:
  Grammar() : program("Tells which parameters made the runs of a scan different.", "runsieve")
  {
    program.set_version_flag("--version", "runsieve " RUNSIEVE_VERSION);
    program.require_subcommand(0, 1);
    program.footer("Example:\n  runsieve simulate -o example.csv && runsieve example.csv\n"
                   "Without a command, FILE is opened in the explorer. runsieve COMMAND --help tells more.");
    addReadOptions(program, bare, false);
    addSimulate();
    addInfo();
    addRank();
    addPairs();
    addSelect();
    addRender();
    addCluster();
    addBox();
    addConvert();
    addExplore();
  }

  Command parse(std::vector<std::string> words)
  {
    std::reverse(words.begin(), words.end()); // as CLI11 wants them
    try {
      program.parse(words);
    } catch (CLI::CallForHelp const&) {
      return Information{program.help()};
    } catch (CLI::CallForVersion const&) {
      return Information{std::string("runsieve " RUNSIEVE_VERSION) + '\n'};
    } catch (CLI::ParseError const& error) {
      throw UsageError(oneLine(error.what()));
    }
    return chosen();
  }

private:
  void addSimulate()
  {
    auto* command = program.add_subcommand("simulate", "Make an example scan from a published model");
    command->add_option("model", simulate.model, "Name of the model; see --list");
    command->add_flag("--list", simulate.list, "Print the names of the models, one a line");
    command->add_flag("--describe", simulate.describe,
                      "Print the model: citation, species, parameters with ranges");
    command->add_option("--runs", simulate.runs, "Number of runs")
        ->capture_default_str()
        ->check(CLI::Range(1, 10000000));
    command->add_option("--times", simulate.times, "Number of time points")
        ->capture_default_str()
        ->check(CLI::Range(2, 1000000));
    command
        ->add_option("--seed", simulate.seed,
                     "Start of the random numbers; without it a new one, which is printed")
        ->check(CLI::Validator(checkSeed, ""));
    std::map<std::string, Sampling> const samplings = {{"lhs", Sampling::LatinHypercube},
                                                       {"sobol", Sampling::Sobol}};
    command->add_option("--sampling", simulate.sampling, "lhs (Latin hypercube, the default) or sobol")
        ->transform(CLI::CheckedTransformer(samplings, CLI::ignore_case).description(""))
        ->type_name("WAY");
    command->add_option("-o,--out", simulate.output, "File to write; - for standard output")
        ->type_name("FILE");
    command->footer(
        "Example:\n  runsieve simulate repressilator --runs 1000 --times 101 --seed 7 -o scan.csv");
  }

  void addInfo()
  {
    auto* command = program.add_subcommand("info", "Print runs, times, outputs and parameters of a scan");
    addReadOptions(*command, info, true);
    command->add_option("--format", info.format, "text or json")
        ->capture_default_str()
        ->check(CLI::IsMember({"text", "json"}).description(""))
        ->type_name("FORMAT");
    command->footer("Example:\n  runsieve info scan.csv");
  }

  void addRank()
  {
    auto* command =
        program.add_subcommand("rank", "Rank the parameters by how they differ between the runs that "
                                       "pass all gates and the others");
    addReadOptions(*command, rank, true);
    addSelectionOptions(*command, rank);
    command->add_option("--format", rank.format, "table, csv or json")
        ->capture_default_str()
        ->check(CLI::IsMember({"table", "csv", "json"}).description(""))
        ->type_name("FORMAT");
    auto* stability = command->add_flag(
        "--stability", rank.stability,
        "Tell how sure each d is, how often it stays among the largest, and whether there are enough runs");
    command
        ->add_option("--top", rank.top,
                     "How many are the largest; default: as many as are significant, at least 1")
        ->check(CLI::Range(std::size_t(1), std::size_t(1000000)).description(""))
        ->type_name("K")
        ->needs(stability);
    command
        ->add_option("--stability-picture", rank.stabilityPicture,
                     "Picture of d against the share of the runs to write, .png, .svg or .pdf")
        ->type_name("FILE")
        ->needs(stability);
    addPictureSize(*command, rank);
    command->footer("Example:\n  runsieve rank scan.csv --gate \"Molecule: A @ 10..12 in 2..5\" --gate \"A @ "
                    "40 in 0..1\"");
  }

  void addPairs()
  {
    auto* command = program.add_subcommand(
        "pairs", "Find parameters that interact: pairs that are correlated in the runs that pass all gates");
    addReadOptions(*command, pairs, true);
    addGates(*command, pairs);
    addSaveSieve(*command, pairs);
    addPThreshold(*command, pairs);
    addPermutations(*command, pairs, 1);
    command->add_option("--format", pairs.format, "table, csv or json")
        ->capture_default_str()
        ->check(CLI::IsMember({"table", "csv", "json"}).description(""))
        ->type_name("FORMAT");
    command->add_option("--top", pairs.top, "Pairs in the table, the strongest; csv and json have all")
        ->capture_default_str()
        ->check(CLI::Range(std::size_t(1), std::size_t(1000000)).description(""))
        ->type_name("N");
    command
        ->add_option("-p,--picture", pairs.picture,
                     "Picture of the runs by the strongest pairs, up to 6, .png, .svg or .pdf")
        ->type_name("FILE");
    command->add_option("--pair", pairs.pair, "Names of two parameters: the only pair in the picture")
        ->type_name("A,B");
    addPictureSize(*command, pairs);
    command->footer("Example:\n  runsieve pairs scan.csv --gate \"A @ 10..12 in 2..5\" -p pairs.png");
  }

  void addSelect()
  {
    auto* command = program.add_subcommand(
        "select", "List the runs that pass all gates, with their parameters, or make a scan of them");
    addReadOptions(*command, select, true);
    addSelectionOptions(*command, select);
    command->add_flag("--not", select.others, "The runs that do not pass");
    command
        ->add_option("--format", select.format,
                     "table, csv or json of the runs, or scan: a scan of only these runs")
        ->capture_default_str()
        ->check(CLI::IsMember({"table", "csv", "json", "scan"}).description(""))
        ->type_name("FORMAT");
    command->add_option("-o,--out", select.output, "File to write; default: standard output, as -")
        ->type_name("FILE");
    command->footer(
        "Example:\n  runsieve select scan.csv --gate \"A @ 10..12 in 2..5\" --format csv -o runs.csv");
  }

  void addRender()
  {
    auto* command = program.add_subcommand("render", "Draw runs and parameter distributions as a picture");
    addReadOptions(*command, render, true);
    addSelectionOptions(*command, render);
    command->add_option("-o,--out", render.output, "Picture to write, .png or .pdf; of a figure also .svg")
        ->required()
        ->type_name("FILE");
    addPictureSize(*command, render);
    command
        ->add_option("--species", render.species,
                     "Output on the vertical axis; default: that of the first gate")
        ->type_name("NAME");
    command->add_flag("--density", render.density, "Densities instead of cumulative curves");
    command->add_flag("--common-scale", render.commonScale, "One vertical scale for all densities");
    command->add_flag("--quantiles", render.quantiles, "Quartile bands instead of all runs");
    command->add_flag("--log-axes", render.logAxes, "Logarithmic parameter axes");
    command->add_flag("--points", render.points, "Points instead of lines");
    command->add_flag("--plain-lines", render.plainLines,
                      "Lines over lines in one colour instead of shades by the number of runs");
    addFigureOptions(*command, render.figure);
    command->footer(
        "Example:\n  runsieve render scan.csv --gate \"Molecule: A @ 10..12 in 2..5\" -o view.png\n"
        "  runsieve render scan.csv --gate \"A @ 10..12 in 2..5\" --figure --width-mm 85 -o figure.pdf");
  }

  void addCluster()
  {
    auto* command = program.add_subcommand("cluster", "Group the runs by the shape of their time courses");
    addReadOptions(*command, cluster, true);
    command->add_option("-k,--clusters", cluster.clusters, "Number of clusters")
        ->capture_default_str()
        ->check(CLI::Range(1, 1000));
    command->add_option("--mode", cluster.mode, "curves, phase or magnitude (of the Fourier transform)")
        ->capture_default_str()
        ->check(CLI::IsMember({"curves", "phase", "magnitude"}).description(""))
        ->type_name("MODE");
    command->add_option("--species", cluster.species, "Output whose runs are grouped; default: the first")
        ->type_name("NAME");
    command->add_option("-o,--out", cluster.output, "File for run numbers and clusters, as text")
        ->type_name("FILE");
    command->add_option("-p,--picture", cluster.picture, "Picture to write, .png or .pdf")->type_name("FILE");
    addPictureSize(*command, cluster);
    addSelectionOptions(*command, cluster);
    command->add_flag("--rank", cluster.rank,
                      "Rank the parameters by how each cluster differs from the rest");
    command->footer("Example:\n  runsieve cluster scan.csv -k 4 --rank -o clusters.csv -p clusters.png");
  }

  void addBox()
  {
    auto* command = program.add_subcommand(
        "box", "Find the ranges of parameters that hold most runs that pass and few others");
    addReadOptions(*command, box, true);
    addGates(*command, box);
    command
        ->add_option("--save-sieve", box.boxSieve,
                     "Write the gates of the box, and no others, to this sieve file")
        ->type_name("FILE");
    addSearchOptions(*command);
    command->add_option("--format", box.format, "table, csv (of the path) or json")
        ->capture_default_str()
        ->check(CLI::IsMember({"table", "csv", "json"}).description(""))
        ->type_name("FORMAT");
    command
        ->add_option("-p,--picture", box.picture,
                     "Picture of coverage and density to write, .png, .svg or .pdf")
        ->type_name("FILE");
    addPictureSize(*command, box);
    command->footer("Example:\n  runsieve box scan.csv --gate \"A @ 10..12 in 2..5\" --coverage 0.9");
  }

  void addSearchOptions(CLI::App& command)
  {
    auto* coverage = command
                         .add_option("--coverage", box.box.leastCoverage,
                                     "Share of the passing runs that the box holds at least; default: 0.8")
                         ->check(CLI::Range(0.0, 1.0))
                         ->check(CLI::Validator(checkNumber, ""))
                         ->type_name("SHARE")
                         ->group(boxGroup);
    command
        .add_flag("--knee", box.knee, "The box of the largest harmonic mean of coverage and density instead")
        ->excludes(coverage)
        ->group(boxGroup);
    command.add_option("--peel", box.box.peel, "Share of the runs inside that one peel takes away")
        ->capture_default_str()
        ->check(CLI::Validator(checkPeel, ""))
        ->type_name("SHARE")
        ->group(boxGroup);
    command.add_option("--mass", box.box.leastMass, "Share of all runs that stays inside at least")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 1.0))
        ->check(CLI::Validator(checkNumber, ""))
        ->type_name("SHARE")
        ->group(boxGroup);
    command
        .add_option("--quasi-p", box.box.largestQuasiP,
                    "Take out limits of a larger quasi-p-value; default: none")
        ->check(CLI::Range(0.0, 1.0))
        ->check(CLI::Validator(checkNumber, ""))
        ->type_name("P")
        ->group(boxGroup);
    command
        .add_option("--resamples", box.box.resamples,
                    "Random halves of the runs in which the box is looked for again")
        ->capture_default_str()
        ->check(CLI::Range(std::size_t(0), std::size_t(100000)).description(""))
        ->type_name("N")
        ->group(boxGroup);
    command.add_option("--seed", box.seed, "Start of the random numbers; default: 1")
        ->check(CLI::Validator(checkSeed, ""))
        ->type_name("SEED")
        ->group(boxGroup);
  }

  void addConvert()
  {
    auto* command = program.add_subcommand(
        "convert", "Turn a scan into a stored plot (.rsd), which keeps selection, view and zoom, or back");
    addReadOptions(*command, convert, true);
    command->add_option("target", convert.output, "File to write, .rsd or .csv")->required();
    addGates(*command, convert);
    command->footer("Example:\n  runsieve convert scan.csv scan.rsd --gate \"A @ 10 in 2..5\"");
  }

  void addExplore()
  {
    auto* command = program.add_subcommand("explore", "Open the desktop explorer");
    addReadOptions(*command, explore, false);
    command->add_option("more", explore.more, "Further scans, each in a window of its own");
    command->footer("Example:\n  runsieve explore scan.csv");
  }

  Command chosen() const
  {
    auto const options = program.get_options();
    bool const isBareUsed = std::any_of(options.begin(), options.end(), [](CLI::Option const* option) {
      bool const reads = option->get_group() == readGroup || option->get_name() == "file";
      return reads && option->count() > 0;
    });
    if (isBareUsed && !program.get_subcommands().empty())
      throw UsageError("a file and its options stand behind the command " +
                       program.get_subcommands().front()->get_name());
    if (program.got_subcommand("simulate")) return checked(simulate);
    if (program.got_subcommand("info")) return info;
    if (program.got_subcommand("rank")) return checked(rank);
    if (program.got_subcommand("pairs")) return checked(pairs);
    if (program.got_subcommand("select")) return checked(select);
    if (program.got_subcommand("render")) return checked(render);
    if (program.got_subcommand("cluster")) return cluster;
    if (program.got_subcommand("box")) return checked(box);
    if (program.got_subcommand("convert")) return convert;
    if (program.got_subcommand("explore")) return explore;
    return bare;
  }

  static SimulateArguments checked(SimulateArguments const& arguments)
  {
    if (!arguments.list && !arguments.describe && arguments.output.empty())
      throw UsageError("simulate: -o is required (- for standard output)");
    return arguments;
  }

  // Only a stored plot has a selection of its own.
  static void requireGates(SieveArguments const& arguments, char const* command)
  {
    bool const isStored = fileEnding(arguments.file) == ".rsd" || isStoredPlot(arguments.file);
    if (!arguments.hasGates() && !isStored) throw UsageError(std::string(command) + ": --gate is required");
  }

  static RankArguments checked(RankArguments const& arguments)
  {
    requireGates(arguments, "rank");
    return arguments;
  }

  RenderArguments checked(RenderArguments const& arguments) const
  {
    auto const* command = program.get_subcommand("render");
    for (char const* other : {"--width", "--height", "--species", "--common-scale", "--points"})
      if (arguments.figure.wanted && command->count(other) > 0)
        throw UsageError(std::string("render: ") + other + " does not go with --figure");
    return arguments;
  }

  static BoxArguments checked(BoxArguments const& arguments)
  {
    requireGates(arguments, "box");
    return arguments;
  }

  static PairsArguments checked(PairsArguments const& arguments)
  {
    requireGates(arguments, "pairs");
    if (!arguments.pair.empty() && arguments.picture.empty())
      throw UsageError("pairs: --pair says what the picture shows, which needs -p");
    return arguments;
  }

  // The ending of the file says which format is meant, unless one is told.
  SelectArguments checked(SelectArguments arguments) const
  {
    requireGates(arguments, "select");
    bool const isTold = program.get_subcommand("select")->count("--format") > 0;
    std::string const ending = fileEnding(arguments.output);
    if (!isTold && (ending == ".csv" || ending == ".json")) arguments.format = ending.substr(1);
    return arguments;
  }

  static std::string oneLine(std::string text)
  {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
  }

  CLI::App program;
  SimulateArguments simulate;
  InfoArguments info;
  RankArguments rank;
  PairsArguments pairs;
  SelectArguments select;
  RenderArguments render;
  ClusterArguments cluster;
  BoxArguments box;
  ConvertArguments convert;
  ExploreArguments explore;
  ExploreArguments bare;
};

} // namespace

Command parseCommandLine(std::vector<std::string> const& words)
{
  return Grammar().parse(words);
}

} // namespace runsieve::app
