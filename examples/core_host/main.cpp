// core_host SCAN GATE...: which parameters made the runs that pass different?
#include <runsieve/core/compare/Comparison.h>
#include <runsieve/core/gate/GateRuns.h>
#include <runsieve/core/gate/GateText.h>
#include <runsieve/core/read/ReadScan.h>

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
  if (argc < 3) {
    std::cerr << "usage: core_host SCAN GATE...\n";
    return 2;
  }
  try {
    const runsieve::ScanFile file = runsieve::readScan(argv[1]);
    for (runsieve::Finding const& finding : file.report.findings)
      if (finding.guess) std::cout << "guessed: " << finding.what << '\n';

    std::vector<runsieve::Gate> gates;
    for (int i = 2; i < argc; ++i) gates.push_back(runsieve::parseGate(argv[i]));
    const runsieve::GateResult result = runsieve::applyGates(gates, file.scan);
    std::cout << result.runs.count() << " of " << file.scan.runs.size() << " runs pass\n";
    for (auto const& parameter : runsieve::compareParameters(file.scan, result.runs).parameters)
      std::cout << parameter.name << ": d " << parameter.d << ", p " << parameter.p << '\n';
  } catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
