#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// The outline of a thick line that runs one way in x: at each edge between two columns of pixels the lowest
/// and the highest y that the line covers.
///
/// The line has a half width of at least 0.5 pixels, round joins and flat ends. At its ends it covers whole
/// columns, those of which it fills half or more: tips of thousands of lines would add up to a bar behind
/// their last point.
class LineEnvelope
{
public:
  /// Columns first to last - 1. None if first == last.
  struct Columns
  {
    int first;
    int last;
  };

  /// \param columns of the picture; the rest of a line is left out.
  /// \param halfWidth of the line in pixels, 0.5 or more: thinner, a peak between two edges would be missed.
  LineEnvelope(int columns, float halfWidth);

  /// A column in which one side of the outline goes up or down at once, by more than two pixels, instead of
  /// evenly from edge to edge.
  struct Jump
  {
    int column;
    bool isAbove; ///< which side
    float from;   ///< where in the column, 0 to 1
    float to;
  };

  /// Finds the outline of a line.
  /// \param x in pixels, not decreasing.
  /// \param y in pixels.
  /// \param count two or more.
  /// \return the columns that it covers.
  Columns trace(float const* x, float const* y, std::size_t count);

  /// Highest y at the left edge of each column, and at the right edge of the last, of those that trace() has
  /// returned. The arrays stay where they are.
  [[nodiscard]] float const* upper() const { return top.data(); }
  /// Lowest y, likewise. Above the highest at most by the error of a float.
  [[nodiscard]] float const* lower() const { return bottom.data(); }
  /// The jumps of the line that trace() has been given last, in no column that it does not cover.
  [[nodiscard]] std::vector<Jump> const& jumps() const { return steps; }

private:
  /// The edges start to end - 1 along which a segment is on the outline.
  struct Spans
  {
    std::vector<int> start;
    std::vector<int> end;
  };

  void measureSegments(float const* x, float const* y, std::size_t segments);
  Columns coveredColumns(float const* x, std::size_t segments) const;
  void traceColumn(float const* y, std::size_t count, int column);
  void traceSegments(float const* x, float const* y, std::size_t segments, Columns covered);
  void traceJoins(float const* x, float const* y, std::size_t segments, Columns covered);
  void findJumps(float const* x, float const* y, std::size_t segments, Columns covered);
  void traceEnd(float x, float y, std::size_t segment, Columns covered);

  int columns;
  float halfWidth;
  std::vector<float> top;
  std::vector<float> bottom;
  std::vector<float> slope; ///< of each segment
  std::vector<float> rise;  ///< vertical distance from the middle of a segment to its outline
  std::vector<float> shift; ///< of the outline against the middle, to the left above, to the right below
  Spans above;
  Spans below;
  std::vector<Jump> steps;
};

} // namespace runsieve
