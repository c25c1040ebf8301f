#pragma once

namespace runsieve::bench {

/// Runs the benchmarks that are registered and reports on standard error: the library writes lines of its own
/// to standard output, which are dropped from here on. \return the exit status
int runQuietly(int argc, char** argv);

} // namespace runsieve::bench
