#pragma once

#include <cstddef>
#include <vector>

namespace runsieve {

/// Data to device pixels, one scale and offset for each direction: pixel = data * scale + offset. Pixel k
/// spans k to k + 1; row 0 is the bottom row.
struct PixelMap
{
  double xScale = 1;
  double xOffset = 0;
  double yScale = 1;
  double yOffset = 0;
};

/// Maps a line to pixels and cuts it into pieces along which x does not decrease.
///
/// A point that is not finite ends a piece, and so does a point where the line turns back in x; both pieces
/// keep that turning point. A piece of descending x is handed out in reverse. What lies far outside every
/// picture is cut off, so that floats hold the rest with an error below 1/250 pixel.
class LinePieces
{
public:
  /// No coordinate of a piece is larger, in pixels, nor smaller than its negative.
  static constexpr float farthest = 32768;

  /// A piece; its arrays are valid until the next call.
  struct Piece
  {
    float const* x; ///< in pixels, not decreasing
    float const* y; ///< in pixels
    std::size_t count;
  };

  explicit LinePieces(PixelMap const& map) : map(map) {}

  /// Cuts a line.
  /// \param points x and y of each point in turn, 2 * count floats.
  /// \return the pieces in the order of the line, each of two points or more. Valid until the next call.
  std::vector<Piece> const& cut(float const* points, std::size_t count);

private:
  struct Point
  {
    double x;
    double y;
  };

  bool cutPlainLine(float const* points, std::size_t count);
  void cutAnyLine(float const* points, std::size_t count);
  void appendSegment(Point from, Point to);
  void appendPoint(Point point);
  void endPiece();

  PixelMap map;
  std::vector<float> x;
  std::vector<float> y;
  std::vector<std::size_t> ends; ///< behind the last point of each piece
  std::vector<Piece> pieces;
  bool descends = false;
};

} // namespace runsieve
