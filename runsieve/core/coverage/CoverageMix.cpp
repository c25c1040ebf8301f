#include <runsieve/core/coverage/CoverageMix.h>

#include <runsieve/core/coverage/OpacityTable.h>
#include <runsieve/core/coverage/RunCoverage.h>

#include <algorithm>
#include <stdexcept>

namespace runsieve {

CoverageMix::CoverageMix(int width, int height)
    : width(static_cast<std::size_t>(width)), height(static_cast<std::size_t>(height)),
      through(this->width * this->height, 1.0F), weights(through.size()), red(through.size()),
      green(through.size()), blue(through.size())
{}

void CoverageMix::add(RunCoverage const& coverage, Color const& color, double opacity)
{
  RunCoverage::Frame const& frame = coverage.frame();
  if (static_cast<std::size_t>(frame.width) != width || static_cast<std::size_t>(frame.height) != height)
    throw std::invalid_argument("coverage mix: sizes differ");
  const OpacityTable table(opacity);
  const float part = 1.0F / static_cast<float>(frame.subRows);
  const auto weight = static_cast<float>(opacity) * part / RunCoverage::perRun;
  std::vector<std::uint32_t> counts(width);
  std::vector<float> lines(width);
  std::vector<float> opacities(width);
  int next = 0;
  for (std::size_t row = 0; row < height; ++row) {
    std::fill(lines.begin(), lines.end(), 0.0F);
    std::fill(opacities.begin(), opacities.end(), 0.0F);
    for (int i = 0; i < frame.subRows; ++i) {
      coverage.step(next++, counts.data());
      for (std::size_t k = 0; k < width; ++k) {
        lines[k] += static_cast<float>(counts[k]);
        opacities[k] += part * table.at(counts[k]);
      }
    }
    addRow(row, lines, opacities, color, weight);
  }
}

void CoverageMix::addRow(std::size_t row, std::vector<float> const& lines,
                         std::vector<float> const& opacities, Color const& color, float weight)
{
  const std::size_t first = row * width;
  for (std::size_t k = 0; k < width; ++k) {
    const float own = weight * lines[k];
    through[first + k] *= 1 - opacities[k];
    weights[first + k] += own;
    red[first + k] += own * color[0];
    green[first + k] += own * color[1];
    blue[first + k] += own * color[2];
  }
}

void CoverageMix::store(std::uint8_t* bytes) const
{
  const auto byteOf = [](float value) { return static_cast<std::uint8_t>(static_cast<int>(value + 0.5F)); };
  for (std::size_t i = 0; i < through.size(); ++i, bytes += 4) {
    const float scale = weights[i] > 0 ? 1 / weights[i] : 0;
    bytes[0] = byteOf(red[i] * scale);
    bytes[1] = byteOf(green[i] * scale);
    bytes[2] = byteOf(blue[i] * scale);
    bytes[3] = byteOf(255 * (1 - through[i]));
  }
}

} // namespace runsieve
