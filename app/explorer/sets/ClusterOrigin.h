#pragma once

#include <optional>
#include <string>

namespace runsieve::app {

/// Where a set is from that is a cluster: "cluster 1 of 4 of A by curves". \param number counted from 0
[[nodiscard]] std::string clusterOrigin(int number, int count, std::string const& output,
                                        std::string const& mode);

/// The number of the cluster that a set was made of; nothing for other sets.
[[nodiscard]] std::optional<int> clusterOf(std::string const& origin);

} // namespace runsieve::app
