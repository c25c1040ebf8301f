#include "app/explorer/tables/ParameterColumns.h"

#include "app/cli/RankReport.h"
#include "app/explorer/controls/PlainText.h"

namespace runsieve::app {

namespace {

using Row = ParameterComparison;

QString number(double value, char const* format)
{
  return QString::fromStdString(formatted(value, format, "-"));
}

QString percent(double share)
{
  return number(100.0 * share, "%.0f%%");
}

QString p(double value, bool isBelow = false)
{
  return QString::fromStdString(pText(value, isBelow));
}

} // namespace

std::vector<ParameterColumn> const& parameterColumns()
{
  static const std::vector<ParameterColumn> columns = {
      {"Parameter", "Name of the parameter", [](Row const& r, Adjustment) { return shownText(r.name); },
       nullptr},
      {"d",
       "Largest distance of the distributions of passing runs and others, -1 to 1; + where passing runs are "
       "the "
       "larger ones",
       [](Row const& r, Adjustment) { return number(r.d, "%+.3f"); },
       [](Row const& r, Adjustment) { return r.d; }},
      {"p adj", "p-value that takes account of all parameters looked at; it decides what is significant",
       [](Row const& r, Adjustment a) { return p(adjustedP(r, a)); },
       [](Row const& r, Adjustment a) { return adjustedP(r, a); }},
      {"sig.", "A star for parameters that differ by both thresholds, of adjusted p and of d",
       [](Row const& r, Adjustment) { return QString(r.significant ? "*" : ""); },
       [](Row const& r, Adjustment) { return r.significant ? 0.0 : 1.0; }},
      {"p", "p-value of this parameter alone, if no other were looked at",
       [](Row const& r, Adjustment) { return p(r.p, r.isBelow); },
       [](Row const& r, Adjustment) { return r.p; }},
      {"med. passing", "Middle value of the passing runs",
       [](Row const& r, Adjustment) { return number(r.medianPassing, "%.4g"); },
       [](Row const& r, Adjustment) { return r.medianPassing; }},
      {"med. others", "Middle value of the other runs",
       [](Row const& r, Adjustment) { return number(r.medianOthers, "%.4g"); },
       [](Row const& r, Adjustment) { return r.medianOthers; }},
      {"shift", "Difference of the medians, in interquartile ranges of all runs",
       [](Row const& r, Adjustment) { return number(r.medianShift, "%+.2f"); },
       [](Row const& r, Adjustment) { return r.medianShift; }},
      {"kept", "Share of the range of the parameter that the passing runs span",
       [](Row const& r, Adjustment) { return percent(r.rangeShare); },
       [](Row const& r, Adjustment) { return r.rangeShare; }},
      {"area", "Area between the distributions, in ranges of the parameter, 0 to 1",
       [](Row const& r, Adjustment) { return number(r.area, "%.4g"); },
       [](Row const& r, Adjustment) { return r.area; }},
      {"at", "Value at which the distributions are furthest apart",
       [](Row const& r, Adjustment) { return r.isText ? shownText(r.text) : number(r.value, "%.4g"); },
       [](Row const& r, Adjustment) { return r.value; }},
      {"n passing", "Passing runs that have a value",
       [](Row const& r, Adjustment) { return QString("%L1").arg(r.passing); },
       [](Row const& r, Adjustment) { return static_cast<double>(r.passing); }},
      {"n others", "Other runs that have a value",
       [](Row const& r, Adjustment) { return QString("%L1").arg(r.others); },
       [](Row const& r, Adjustment) { return static_cast<double>(r.others); }},
      {"p by", "How p was found: exactly, by its limit for many runs, or by permutation",
       [](Row const& r, Adjustment) { return QString(pSourceName(r.source)); }, nullptr},
      {"p Holm", "p adjusted by Holm's method", [](Row const& r, Adjustment) { return p(r.pHolm); },
       [](Row const& r, Adjustment) { return r.pHolm; }},
      {"p BH", "p adjusted by the false discovery rate (Benjamini and Hochberg)",
       [](Row const& r, Adjustment) { return p(r.pBenjaminiHochberg); },
       [](Row const& r, Adjustment) { return r.pBenjaminiHochberg; }},
      {"p perm", "p adjusted by the largest d of permutations (Westfall and Young)",
       [](Row const& r, Adjustment) { return p(r.pPermutation); },
       [](Row const& r, Adjustment) { return r.pPermutation; }}};
  return columns;
}

} // namespace runsieve::app
