#pragma once

#include <runsieve/records/plotStyles.h>

#include <boost/functional/hash.hpp>

#include <cstddef>

/// The key under which a plot's axis window is remembered.
struct ReducedMetaData
{
  int xColumn = 0;
  int yColumn = 0;
  plotStyles plotStyle = scatterPlot;
};

inline bool operator==(ReducedMetaData const& a, ReducedMetaData const& b)
{
  return a.xColumn == b.xColumn && a.yColumn == b.yColumn && a.plotStyle == b.plotStyle;
}

inline std::size_t hash_value(ReducedMetaData const& key)
{
  std::size_t seed = 0;
  boost::hash_combine(seed, key.xColumn);
  boost::hash_combine(seed, key.yColumn);
  boost::hash_combine(seed, static_cast<int>(key.plotStyle));
  return seed;
}
