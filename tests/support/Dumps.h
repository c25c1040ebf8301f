#pragma once

#include "support/PlotParts.h"

#include <QByteArray>

#include <memory>

namespace runsieve::test {

inline QByteArray dumpOf(PlotContainer& container)
{
  std::unique_ptr<QByteArray> const dump(container.binaryDump());
  return dump ? *dump : QByteArray();
}

inline void readInto(PlotContainer& container, QByteArray dump)
{
  container.readDump(&dump);
}

} // namespace runsieve::test
