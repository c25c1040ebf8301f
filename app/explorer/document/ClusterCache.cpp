#include "app/explorer/document/ClusterCache.h"

#include <runsieve/core/compare/Clusters.h>

#include <algorithm>
#include <utility>

namespace runsieve::app {

ClusterCache::ClusterCache(QObject* parent) : QObject(parent) {}

void ClusterCache::reset(std::shared_ptr<Scan const> opened)
{
  work.cancel();
  scan = std::move(opened);
  known.clear();
  waiting.clear();
}

GateContext ClusterCache::context()
{
  GateContext context;
  context.clusters = [this](Scan const&, std::size_t output, ClusterMode mode, int clusters) {
    return labelsOf(output, mode, clusters);
  };
  return context;
}

std::vector<int> ClusterCache::labelsOf(std::size_t output, ClusterMode mode, int clusters)
{
  const Key key(output, mode, clusters);
  auto const labels = known.find(key);
  if (labels != known.end()) return labels->second;
  if (std::find(waiting.begin(), waiting.end(), key) == waiting.end()) {
    waiting.push_back(key);
    if (waiting.size() == 1) begin(key);
  }
  throw GateError("the runs are being grouped");
}

void ClusterCache::begin(Key const& key)
{
  work.start([this, key, data = scan](Background::Cancelled const& cancelled) -> std::function<void()> {
    auto const [output, mode, clusters] = key;
    std::vector<int> labels = clusterRuns(*data, output, mode, clusters, 0, {0, cancelled});
    return [this, key, data, labels = std::move(labels)] {
      if (data != scan) return;
      known[key] = labels;
      waiting.erase(std::remove(waiting.begin(), waiting.end(), key), waiting.end());
      if (!waiting.empty()) begin(waiting.front());
      Q_EMIT found();
    };
  });
}

} // namespace runsieve::app
