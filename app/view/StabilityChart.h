#pragma once

#include <runsieve/core/compare/StabilityOfComparison.h>

#include <vtkContextItem.h>

#include <array>
#include <string>
#include <vector>

class vtkContext2D;

namespace runsieve::app {

/// |d| of the first parameters of a comparison against the share of the runs, on a logarithmic axis: medians
/// with whiskers of 5 % to 95 % of the subsamples, beside each other where they would cover each other; the
/// noise floor as a grey area. Significant parameters have a colour each, the others are grey-blue. Names
/// stand at the ends of the lines. Fills the scene that it is added to.
class StabilityChart : public vtkContextItem
{
public:
  static StabilityChart* New();
  vtkTypeMacro(StabilityChart, vtkContextItem);

  void show(Comparison const& comparison, ComparisonStability const& stability);
  bool Paint(vtkContext2D* painter) override;

protected:
  StabilityChart() = default;
  ~StabilityChart() override = default;

private:
  using Color = std::array<unsigned char, 3>;

  struct Curve
  {
    std::string name;
    Color color;
    bool significant = false;
    std::vector<DistanceAtSize> points; ///< one per size
  };

  struct Size
  {
    double share = 0.0;
    std::string text; ///< its runs
    double floor = 0.0;
  };

  /// Where things are, in pixels.
  struct Layout
  {
    float font = 0.0f; ///< height of letters
    float left = 0.0f, right = 0.0f, bottom = 0.0f, top = 0.0f;
    float above = 0.0f; ///< of the scene
    float toTheRight = 0.0f;
    double most = 1.0; ///< |d| at the top
    float step = 0.0f; ///< from one curve to the next beside it
  };

  struct Label
  {
    std::string text;
    Color color;
    float end; ///< height of the end of its line
    float y;
    float from; ///< where the line to the name begins
  };

  [[nodiscard]] Layout layoutFor(vtkContext2D* painter);
  [[nodiscard]] float across(Layout const& layout, double share) const;
  [[nodiscard]] float across(Layout const& layout, std::size_t size, std::size_t curve) const;
  [[nodiscard]] static float up(Layout const& layout, double d);
  [[nodiscard]] std::vector<std::string> headerLines(vtkContext2D* painter, Layout const& layout) const;

  void paintHeader(vtkContext2D* painter, Layout const& layout) const;
  void paintFloor(vtkContext2D* painter, Layout const& layout) const;
  void paintAxes(vtkContext2D* painter, Layout const& layout) const;
  void paintCurve(vtkContext2D* painter, Layout const& layout, std::size_t curve) const;
  void paintLabels(vtkContext2D* painter, Layout const& layout) const;
  [[nodiscard]] std::vector<Label> labels(Layout const& layout) const;

  std::string verdict;
  std::string subtitle;
  std::vector<Curve> curves;
  std::vector<Size> sizes;
};

} // namespace runsieve::app
