#include "QuietRun.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <memory>

namespace runsieve::bench {

int runQuietly(int argc, char** argv)
{
  benchmark::Initialize(&argc, argv);
  std::cout.rdbuf(nullptr);
  std::unique_ptr<benchmark::BenchmarkReporter> reporter(benchmark::CreateDefaultDisplayReporter());
  std::ostream report(std::cerr.rdbuf());
  reporter->SetOutputStream(&report);
  reporter->SetErrorStream(&report);
  benchmark::RunSpecifiedBenchmarks(reporter.get());
  return 0;
}

} // namespace runsieve::bench
