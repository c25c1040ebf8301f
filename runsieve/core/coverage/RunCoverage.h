#pragma once

#include <runsieve/core/coverage/LineEnvelope.h>
#include <runsieve/core/coverage/LinePieces.h>
#include <runsieve/core/runsieve_core_export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace runsieve {

/// Runs of `stride` points each, behind one another in one array of x and y in turn: 2 * stride * count
/// floats, which belong to the caller.
struct RunBlock
{
  float const* points = nullptr;
  std::size_t stride = 0;
  std::size_t count = 0; ///< runs
};

/// Counts, per pixel, how many lines cover it.
///
/// A line that runs one way in x covers one interval of y in each column. Its lower edge adds to a difference
/// image, its upper edge subtracts, and sums over the rows give the counts. So the time per line depends
/// neither on its width nor on what is below it, and a line never counts twice in a pixel, at joints neither;
/// where it turns back in x its pieces do. Everything is whole numbers proportional to the weight: taking
/// away what was added restores the buffer bit for bit, whatever came in between.
///
/// One object serves one thread. Lines in several threads go into one object each, and merge().
class RUNSIEVE_CORE_EXPORT RunCoverage
{
public:
  /// The unit of counts: a pixel that one line of one coat covers has as many.
  static constexpr std::uint32_t perRun = 256;
  /// What all lines of an object may have together, coats times pieces: beyond, a count could wrap. More than
  /// 1,600,000 runs of 10 coats.
  static constexpr std::int64_t mostCoats = UINT32_MAX / perRun;
  /// Pixels, in each direction.
  static constexpr int largestSize = 16384;

  struct Frame
  {
    int width = 1;  ///< device pixels, 1 to largestSize
    int height = 1; ///< device pixels, 1 to largestSize
    /// 1, 2 or 4 rows of counts for each row of pixels. A layer whose lines have several coats needs them:
    /// part of a pixel under ten coats is opaque, and edges become saw teeth. Steep edges keep theirs. Where
    /// all lines have as many coats, one coat and the opacity of all of them is better: it is smooth at all
    /// edges.
    int subRows = 1;
    double halfWidth = 0.5; ///< of the lines, in device pixels; less than 0.5 counts as 0.5
    PixelMap map;           ///< data to device pixels
  };

  /// \throws std::invalid_argument if a size, the sub-rows, or a number of the map is out of range or not
  /// finite.
  explicit RunCoverage(Frame const& frame);

  [[nodiscard]] Frame const& frame() const { return shape; }
  /// Rows of counts: height times subRows.
  [[nodiscard]] int rows() const { return shape.height * shape.subRows; }
  /// Coats times pieces of the lines that are in.
  [[nodiscard]] std::int64_t coats() const { return load; }

  /// Adds a line. NaN and infinities part it; fewer than two points in a row draw nothing.
  /// \param points x and y in turn, 2 * count floats.
  /// \param coats as how many lines it counts.
  /// \return false, and nothing has changed, if mostCoats could be exceeded.
  bool add(float const* points, std::size_t count, std::uint8_t coats = 1);
  /// Takes a line away that was added with the same points and coats.
  void remove(float const* points, std::size_t count, std::uint8_t coats = 1);

  /// Adds runs.
  /// \param coats of each run, or null: one each.
  /// \return false, and nothing has changed, if mostCoats could be exceeded.
  bool add(RunBlock const& runs, std::uint8_t const* coats = nullptr);
  /// Takes runs away that were added with the same coats.
  void remove(RunBlock const& runs, std::uint8_t const* coats = nullptr);
  /// Draws those runs whose coats differ so that all have the new ones. The result is the same, bit for bit,
  /// as that of adding all of them anew. \return false, and nothing has changed, if mostCoats could be
  /// exceeded.
  bool change(RunBlock const& runs, std::uint8_t const* oldCoats, std::uint8_t const* newCoats);

  /// Adds the counts of another object.
  /// \return false, and nothing has changed, if mostCoats would be exceeded.
  /// \throws std::invalid_argument if its size or its sub-rows differ.
  bool merge(RunCoverage const& other);
  /// Takes all lines away.
  void clear();

  /// Goes up one row: adds the difference of a row to the counts of the row below it, in units of 1 / perRun,
  /// which gives its own.
  /// \param row 0 to rows() - 1, from below. Below row 0 all counts are 0.
  /// \param counts one for each column.
  void step(int row, std::uint32_t* counts) const;
  /// The counts, rows() times width, row by row from below, in units of 1 / perRun.
  [[nodiscard]] std::vector<std::uint32_t> counts() const;

  /// The difference image, to compare two objects of one frame.
  [[nodiscard]] std::vector<std::uint32_t> const& differences() const { return buffer; }

private:
  /// Where in a column a side of the outline rises or falls, from 0 to 1; over the whole of it but at jumps.
  struct Ramp
  {
    float from = 0;
    float to = 1;
  };

  bool fits(std::size_t points, int coats) const;
  void draw(float const* points, std::size_t count, int coats);
  void drawPiece(LinePieces::Piece const& piece, int coats);
  bool isOutside(LinePieces::Piece const& piece) const;
  void quantize(LineEnvelope::Columns columns);
  void markJumps();
  void forgetJumps();
  void scatter(LineEnvelope::Columns columns, int coats);
  void scatterSteep(std::uint32_t* column, int k, std::uint32_t coats);

  Frame shape;
  LinePieces cutter;
  LineEnvelope outline;
  /// Strips of columns, each with all its rows from below: an edge that rises stays within few memory pages.
  std::vector<std::uint32_t> buffer;
  std::size_t stripSize; ///< of numbers
  std::int64_t load = 0;
  std::vector<int> lowEdge;   ///< of a column, in 1 / 256 of a row of counts
  std::vector<int> highEdge;  ///< likewise
  std::vector<int> fineness;  ///< of a column: logarithm of the edges that stand for a steep one
  std::vector<Ramp> highRamp; ///< of a column
  std::vector<Ramp> lowRamp;
};

} // namespace runsieve
