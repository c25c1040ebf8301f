#include <runsieve/core/coverage/CoverageImage.h>

#include <runsieve/core/coverage/OpacityTable.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <utility>

namespace runsieve {

namespace {

/// A row of pixels of one layer: colours from 0 to 255, alpha from 0 to 1, not multiplied.
struct Shaded
{
  explicit Shaded(std::size_t width) : red(width), green(width), blue(width), alpha(width) {}

  std::vector<float> red;
  std::vector<float> green;
  std::vector<float> blue;
  std::vector<float> alpha;
};

/// Hands out the rows of a layer from below.
class LayerShader
{
public:
  explicit LayerShader(std::size_t width) : row(width) {}
  virtual ~LayerShader() = default;
  LayerShader(LayerShader const&) = delete;
  LayerShader& operator=(LayerShader const&) = delete;

  virtual Shaded const& nextRow() = 0;

protected:
  Shaded row;
};

class OpacityShader : public LayerShader
{
public:
  OpacityShader(RunCoverage const& coverage, CoverageImage::Look const& look)
      : LayerShader(static_cast<std::size_t>(coverage.frame().width)), coverage(coverage),
        table(look.opacity), counts(row.alpha.size())
  {
    std::fill(row.red.begin(), row.red.end(), look.color[0]);
    std::fill(row.green.begin(), row.green.end(), look.color[1]);
    std::fill(row.blue.begin(), row.blue.end(), look.color[2]);
  }

  Shaded const& nextRow() override
  {
    const int subRows = coverage.frame().subRows;
    const float part = 1 / static_cast<float>(subRows);
    const std::size_t width = counts.size();
    std::fill(row.alpha.begin(), row.alpha.end(), 0.0F);
    for (int i = 0; i < subRows; ++i) {
      coverage.step(next++, counts.data());
      for (std::size_t k = 0; k < width; ++k) row.alpha[k] += part * table.at(counts[k]);
    }
    return row;
  }

private:
  RunCoverage const& coverage;
  OpacityTable table;
  std::vector<std::uint32_t> counts;
  int next = 0;
};

/// Counts of whole pixels, row by row from below.
class PixelCounts
{
public:
  explicit PixelCounts(RunCoverage const& coverage)
      : coverage(coverage), counts(static_cast<std::size_t>(coverage.frame().width)), means(counts.size())
  {}

  std::vector<std::uint32_t> const& nextRow()
  {
    const int subRows = coverage.frame().subRows;
    const int halvings = subRows / 2; // 0, 1 or 2 for 1, 2 or 4 sub-rows
    const std::size_t width = means.size();
    std::fill(means.begin(), means.end(), 0);
    for (int i = 0; i < subRows; ++i) {
      coverage.step(next++, counts.data());
      // Parts, not the sum: that could wrap.
      for (std::size_t k = 0; k < width; ++k) means[k] += counts[k] >> halvings;
    }
    return means;
  }

private:
  RunCoverage const& coverage;
  std::vector<std::uint32_t> counts;
  std::vector<std::uint32_t> means;
  int next = 0;
};

/// Walks over the counts twice, for the scale and for the colours: to keep those of whole pixels between
/// would take as much memory as the counts.
class DensityShader : public LayerShader
{
public:
  DensityShader(RunCoverage const& coverage, CoverageImage::Look const& look)
      : LayerShader(static_cast<std::size_t>(coverage.frame().width)), pixels(coverage),
        colors(CountHistogram::bins)
  {
    CountHistogram histogram;
    PixelCounts all(coverage);
    for (int y = 0; y < coverage.frame().height; ++y) histogram.add(all.nextRow().data(), row.alpha.size());
    const bool isEven = look.shades == CoverageImage::Shades::equalArea;
    shown = DensityScale(isEven ? DensityScale::Kind::equalArea : DensityScale::Kind::logarithmic, histogram);
    const ColorRamp ramp(look.color, look.onDark);
    for (std::size_t bin = 0; bin < colors.size(); ++bin) {
      // The first and the last bin show the ends of the ramp.
      const double low = CountHistogram::lowerEdge(bin);
      const double high = CountHistogram::lowerEdge(bin + 1);
      const double runs = low <= shown.smallest() ? low : high > shown.largest() ? high : (low + high) / 2;
      colors[bin] = ramp.at(shown.shade(runs));
    }
  }

  Shaded const& nextRow() override
  {
    const std::size_t width = row.alpha.size();
    std::uint32_t const* const counts = pixels.nextRow().data();
    for (std::size_t k = 0; k < width; ++k) {
      Color const& color = colors[CountHistogram::binOf(counts[k])];
      row.red[k] = color[0];
      row.green[k] = color[1];
      row.blue[k] = color[2];
    }
    for (std::size_t k = 0; k < width; ++k) {
      const std::uint32_t covered = counts[k] < RunCoverage::perRun ? counts[k] : RunCoverage::perRun;
      row.alpha[k] = static_cast<float>(static_cast<int>(covered)) / RunCoverage::perRun;
    }
    return row;
  }

  [[nodiscard]] DensityScale const& scale() const { return shown; }

private:
  PixelCounts pixels;
  std::vector<Color> colors; ///< of each bin of counts
  DensityScale shown;
};

std::uint8_t byteOf(float value)
{
  return static_cast<std::uint8_t>(static_cast<int>(value + 0.5F));
}

void store(Shaded const& row, std::uint8_t* bytes)
{
  const std::size_t width = row.alpha.size();
  for (std::size_t k = 0; k < width; ++k) {
    const float shows = row.alpha[k] > 0 ? 1 : 0;
    bytes[4 * k] = byteOf(row.red[k] * shows);
    bytes[4 * k + 1] = byteOf(row.green[k] * shows);
    bytes[4 * k + 2] = byteOf(row.blue[k] * shows);
    bytes[4 * k + 3] = byteOf(row.alpha[k] * 255);
  }
}

/// Composes a row over another, which takes the result (source over).
void putOver(Shaded& below, Shaded const& above)
{
  const std::size_t width = below.alpha.size();
  constexpr float nothing = 1e-9F; // no division by zero where both are empty
  for (std::size_t k = 0; k < width; ++k) {
    const float front = above.alpha[k];
    const float back = below.alpha[k] * (1 - front);
    const float alpha = front + back;
    const float scale = 1 / (alpha > nothing ? alpha : nothing);
    below.red[k] = (below.red[k] * back + above.red[k] * front) * scale;
    below.green[k] = (below.green[k] * back + above.green[k] * front) * scale;
    below.blue[k] = (below.blue[k] * back + above.blue[k] * front) * scale;
    below.alpha[k] = alpha;
  }
}

void check(std::vector<CoverageImage::Layer> const& layers)
{
  if (layers.empty() || layers.size() > 2) throw std::invalid_argument("coverage image: one layer or two");
  for (CoverageImage::Layer const& layer : layers) {
    if (!layer.coverage) throw std::invalid_argument("coverage image: a layer without counts");
    const RunCoverage::Frame& frame = layer.coverage->frame();
    const RunCoverage::Frame& first = layers[0].coverage->frame();
    if (frame.width != first.width || frame.height != first.height)
      throw std::invalid_argument("coverage image: sizes differ");
  }
}

} // namespace

void CoverageImage::resolve(std::vector<Layer> const& layers, std::uint8_t* pixels)
{
  check(layers);
  const RunCoverage::Frame& frame = layers[0].coverage->frame();
  const auto width = static_cast<std::size_t>(frame.width);
  scales.assign(layers.size(), DensityScale());
  std::array<std::unique_ptr<LayerShader>, 2> shaders;
  for (std::size_t i = 0; i < layers.size(); ++i) {
    auto const& [coverage, look] = layers[i];
    if (look.shades == Shades::opacity) {
      shaders[i] = std::make_unique<OpacityShader>(*coverage, look);
      continue;
    }
    auto shader = std::make_unique<DensityShader>(*coverage, look);
    scales[i] = shader->scale();
    shaders[i] = std::move(shader);
  }

  Shaded composed(width);
  for (int y = 0; y < frame.height; ++y, pixels += 4 * width) {
    Shaded const& below = shaders[0]->nextRow();
    if (!shaders[1]) {
      store(below, pixels);
      continue;
    }
    composed = below;
    putOver(composed, shaders[1]->nextRow());
    store(composed, pixels);
  }
}

DensityScale CoverageImage::scale(std::size_t layer) const
{
  return layer < scales.size() ? scales[layer] : DensityScale();
}

} // namespace runsieve
