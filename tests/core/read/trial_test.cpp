#include <runsieve/core/read/ReadScan.h>
#include "support/TempFile.h"
#include <gtest/gtest.h>
#include <iostream>
#include <chrono>
using namespace runsieve;
TEST(Trial, X)
{
  auto a = std::chrono::steady_clock::now();
  try {
  ReadOptions o; if (getenv("THREADS")) o.threads = atoi(getenv("THREADS"));
  auto f = readScan(getenv("SCAN"), o);
  std::cout << std::chrono::duration<double>(std::chrono::steady_clock::now() - a).count() << " s\n";
  std::cout << f.report.format << "\nruns " << f.scan.runs.size() << " times " << f.scan.times.size() << " (" << f.scan.time.name << " [" << f.scan.time.unit << "]) " << f.scan.times.front() << ".." << f.scan.times.back() << '\n';
  for (auto const& c : f.report.columns) if (&c - f.report.columns.data() < 25) std::cout << "  " << c.header << ": " << c.role << " (" << c.why << ")\n";
  for (auto const& g : f.report.findings) std::cout << (g.guess ? " ? " : " - ") << g.what << "; " << g.why << '\n';
  f.scan.check();
  } catch (std::exception const& e) { std::cout << e.what() << '\n'; }
}
