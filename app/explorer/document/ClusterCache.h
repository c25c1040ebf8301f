#pragma once

#include "app/explorer/document/Background.h"

#include <runsieve/core/gate/GateRuns.h>

#include <QObject>

#include <map>
#include <memory>
#include <tuple>
#include <vector>

namespace runsieve::app {

/// Clusters of the runs of a scan, for gates that ask for them: grouped once, beside the interface.
class ClusterCache : public QObject
{
  Q_OBJECT

public:
  explicit ClusterCache(QObject* parent = nullptr);

  /// Forgets all clusters. \param scan may be null
  void reset(std::shared_ptr<Scan const> scan);
  /// What gates need. Clusters that are not known yet are begun, and GateError says so.
  [[nodiscard]] GateContext context();
  [[nodiscard]] bool isBusy() const { return work.isBusy(); }

Q_SIGNALS:
  /// Clusters that a gate has asked for are known now.
  void found();

private:
  using Key = std::tuple<std::size_t, ClusterMode, int>;

  std::vector<int> labelsOf(std::size_t output, ClusterMode mode, int clusters);
  void begin(Key const& key);

  std::shared_ptr<Scan const> scan;
  std::map<Key, std::vector<int>> known;
  std::vector<Key> waiting; ///< the first is under way
  Background work;
};

} // namespace runsieve::app
