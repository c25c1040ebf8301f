#include <runsieve/core/compare/EnoughRuns.h>

#include <runsieve/core/text/FieldText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace runsieve {

namespace {

constexpr std::size_t mostNames = 5;

using Places = std::vector<std::size_t>;

struct Judgement
{
  EnoughRuns verdict;
  std::string text;
};

std::string rounded(double value, char const* format)
{
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

std::string percent(double share)
{
  return rounded(100.0 * share, "%.3g") + " %";
}

/// "all 7 significant parameters are", or that of one.
std::string allOf(Places const& significant)
{
  return significant.size() == 1
             ? "the significant parameter is"
             : "all " + std::to_string(significant.size()) + " significant parameters are";
}

/// "2 of the 7 significant parameters (...)", or all, or the only one.
std::string someOf(Places const& some, Places const& significant, Comparison const& comparison)
{
  std::string names;
  for (std::size_t i = 0; i < std::min(some.size(), mostNames); ++i)
    names += (i > 0 ? ", " : "") + quoted(comparison.parameters[some[i]].name);
  if (some.size() > mostNames) names += " and " + std::to_string(some.size() - mostNames) + " more";
  if (significant.size() == 1) return "the significant parameter (" + names + ")";
  std::string const count =
      some.size() == significant.size() ? "all" : std::to_string(some.size()) + " of the";
  return count + " " + std::to_string(significant.size()) + " significant parameters (" + names + ")";
}

Judgement nothingDiffers(ComparisonStability const& stability)
{
  std::string const text = "no parameter is significant";
  ComparisonAtSize const& last = stability.sizes.back();
  if (last.share < 1.0 || std::isnan(last.noiseFloor))
    return {EnoughRuns::NothingDiffers, text + "; only more runs would show smaller differences"};
  return {EnoughRuns::NothingDiffers,
          text + "; d below the noise floor of " + rounded(last.noiseFloor, "%.3f") +
              " can't be told from chance with these runs, only more would lower it"};
}

/// Those whose |d| is lost in the noise at a size.
Places lostAt(ComparisonAtSize const& size, Places const& significant)
{
  Places lost;
  for (std::size_t const place : significant)
    if (!size.isBeyond(place)) lost.push_back(place);
  return lost;
}

Judgement judgementOf(ComparisonStability const& stability, Comparison const& comparison)
{
  std::vector<ComparisonAtSize> const& sizes = stability.sizes;
  if (sizes.empty()) return {EnoughRuns::Unknown, "there is nothing to compare"};
  Places significant;
  for (std::size_t i = 0; i < comparison.parameters.size(); ++i)
    if (comparison.parameters[i].significant) significant.push_back(i);
  if (significant.empty()) return nothingDiffers(stability);
  if (std::any_of(sizes.begin(), sizes.end(),
                  [](ComparisonAtSize const& size) { return std::isnan(size.noiseFloor); }))
    return {EnoughRuns::Unknown, "the threshold of p is too small for a noise floor from so few subsamples"};

  auto const firstOfAll = std::find_if(sizes.begin(), sizes.end(),
                                       [](ComparisonAtSize const& size) { return size.share >= 1.0; });
  if (firstOfAll != sizes.end())
    if (Places const lost = lostAt(*firstOfAll, significant); !lost.empty())
      return {EnoughRuns::WithinNoiseFloor, "d of " + someOf(lost, significant, comparison) +
                                                " is not beyond the noise floor of all runs: a hint, which "
                                                "more runs would confirm or not"};
  if (firstOfAll == sizes.begin())
    return {EnoughRuns::Unknown, "there is no part of the runs to compare with all"};
  auto size = std::prev(firstOfAll);
  if (Places const lost = lostAt(*size, significant); !lost.empty())
    return {EnoughRuns::MoreWouldHelp, "at " + percent(size->share) + " of the runs d of " +
                                           someOf(lost, significant, comparison) +
                                           " still falls into the noise at times: more runs would help"};
  while (size != sizes.begin() && lostAt(*std::prev(size), significant).empty()) --size;
  return {EnoughRuns::Enough, "enough for what was found: " + allOf(significant) +
                                  " beyond the noise floor already at " + percent(size->share) +
                                  " of the runs"};
}

} // namespace

char const* enoughRunsName(EnoughRuns verdict)
{
  constexpr std::array<char const*, 5> names = {"unknown", "nothing differs", "enough", "more would help",
                                                "within the noise floor"};
  return names.at(static_cast<std::size_t>(verdict));
}

void judge(ComparisonStability& stability, Comparison const& comparison)
{
  Judgement judgement = judgementOf(stability, comparison);
  stability.verdict = judgement.verdict;
  stability.verdictText = std::move(judgement.text);
}

} // namespace runsieve
