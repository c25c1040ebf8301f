#pragma once

#include "app/explorer/document/Document.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>

namespace runsieve::test {

/// Between 0 and 1, without a pattern: the fractions of multiples of an irrational number.
inline double scattered(std::size_t column, std::size_t run)
{
  const double turn = static_cast<double>(run + 1) * std::sqrt(2.0 + 3.0 * static_cast<double>(column));
  return turn - std::floor(turn);
}

/// A scan of runs that are straight lines: output A stands at parameter k0 all the time, output B rises from
/// 0 to parameter k1. Times are 0, 1, ... 10.
inline std::shared_ptr<Scan const> lineScan(std::size_t runs = 40, std::size_t parameters = 6)
{
  auto scan = std::make_shared<Scan>();
  scan->time.name = "Time";
  scan->time.unit = "min";
  for (int t = 0; t <= 10; ++t) scan->times.push_back(t);
  for (std::size_t run = 0; run < runs; ++run)
    scan->runs.push_back({std::to_string(run + 1), RunStatus::Complete, scan->times.size()});
  for (std::size_t p = 0; p < parameters; ++p) {
    ScanParameter parameter;
    parameter.label.name = "k" + std::to_string(p);
    for (std::size_t run = 0; run < runs; ++run) parameter.values.push_back(scattered(p, run));
    scan->parameters.push_back(std::move(parameter));
  }
  double* a = scan->addOutput({"A", "", "", ""});
  double* b = scan->addOutput({"B", "nM", "", ""});
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t t = 0; t < scan->times.size(); ++t) {
      *a++ = scattered(0, run);
      *b++ = scattered(1, run) * static_cast<double>(t) / 10.0;
    }
  scan->check();
  return scan;
}

/// Lets events and work beside the interface go on until a condition holds. \return whether it came to hold
inline bool waitFor(std::function<bool()> const& condition, int milliseconds = 20'000)
{
  return QTest::qWaitFor(condition, milliseconds);
}

/// A gate on output A: runs whose k0 lies in a range.
inline Gate gateOnA(double low, double high)
{
  Gate gate;
  gate.column = "A";
  gate.span = GateSpan{2.0, 4.0};
  gate.range = {low, high};
  return gate;
}

/// A document with a scan of lines.
struct DocumentScene : testing::Test
{
  app::Document document;

  DocumentScene() { document.open(lineScan(), {}); }

  void addGate(Gate const& gate)
  {
    document.change("Add gate", [&](app::State& state) {
      state.gates.push_back({document.newGateName(), gate, true});
    });
  }

  [[nodiscard]] bool settle()
  {
    return waitFor([this] { return document.isCompared(); });
  }
};

} // namespace runsieve::test
