#pragma once

#include <runsieve/core/inference/Box.h>
#include <runsieve/core/inference/OrderedValues.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// One parameter of a BoxTable. A level is a group of runs with equal values.
struct BoxColumn
{
  double const* values;               ///< one per run; of a text parameter the number of its category
  std::size_t categories;             ///< 0 for numbers
  OrderedValues ordered;              ///< runs that have a value
  std::vector<std::uint32_t> missing; ///< runs that have none

  [[nodiscard]] std::size_t levels() const { return ordered.groupEnds.size(); }
  [[nodiscard]] std::uint32_t const* begin(std::size_t level) const
  {
    return ordered.order.data() + (level == 0 ? 0 : ordered.groupEnds[level - 1]);
  }
  [[nodiscard]] std::uint32_t const* end(std::size_t level) const
  {
    return ordered.order.data() + ordered.groupEnds[level];
  }
  [[nodiscard]] double valueOf(std::size_t level) const { return values[*begin(level)]; }
};

/// The parameters of a scan, each put in order once, so that boxes can be looked for again and again: with
/// other runs passing, in samples of the runs. Infinite values are the largest and smallest ones.
///
/// Values are not copied: they must outlive the table. Once filled it may be used from several threads.
class BoxTable
{
public:
  /// Categories of a text parameter. With more of them its texts are names of runs rather than choices, and
  /// a box that lists them would tell nothing.
  static constexpr std::size_t MOST_CATEGORIES = 1000;

  /// \throw std::invalid_argument from 2^31 runs on
  explicit BoxTable(std::size_t runs);

  /// Appends a parameter; takes the time of sorting it, some 10 ms for 100,000 runs.
  /// \param values one per run, NaN if missing
  void addNumbers(double const* values);
  /// \param values one per run: whole numbers below `categories`, NaN if missing
  /// \throw std::invalid_argument if they are not, or if there are no or more than MOST_CATEGORIES categories
  void addCategories(double const* values, std::size_t categories);

  [[nodiscard]] std::size_t runs() const { return count; }
  [[nodiscard]] std::vector<BoxColumn> const& columns() const { return parameters; }

  /// Whether a run lies in a box of this table's parameters.
  [[nodiscard]] bool holds(Box const& box, std::size_t run) const;

private:
  void add(double const* values, std::size_t categories);

  std::size_t count;
  std::vector<BoxColumn> parameters;
};

/// The runs among which a box is looked for, and which of them pass.
class BoxSample
{
public:
  /// What marks() says of a run: bit 0 whether it takes part, bit 1 whether it passes as well.
  static constexpr unsigned char OTHER = 1;
  static constexpr unsigned char PASSING = 3;

  /// What one run with such a mark counts for.
  [[nodiscard]] static BoxTally tallyOf(unsigned mark) { return {mark & 1u, mark >> 1u}; }

  /// \param passing one per run, 0 if it does not pass
  /// \param eligible one per run, 0 if it takes no part; all do if null
  BoxSample(unsigned char const* passing, std::size_t runs, unsigned char const* eligible = nullptr);

  [[nodiscard]] std::vector<unsigned char> const& marks() const { return runMarks; }
  [[nodiscard]] BoxTally const& all() const { return total; }

private:
  std::vector<unsigned char> runMarks;
  BoxTally total;
};

/// \throw std::invalid_argument if a sample is not of as many runs as the table
void checkSizes(BoxTable const& table, BoxSample const& sample);

} // namespace runsieve
