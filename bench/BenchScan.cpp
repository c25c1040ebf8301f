#include "BenchScan.h"

#include "BenchColumns.h"

#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkSelectionNode.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <map>
#include <utility>

namespace runsieve::bench {

namespace {

constexpr int species = BenchColumns::species;
constexpr int parameters = BenchColumns::parameters;

void nameColumns(LinePlotTable& table, std::vector<double*>& columns)
{
  for (int s = 0; s < species; ++s)
    columns.push_back(table.addColumn(Kestrane::Molecule, std::string(1, static_cast<char>('A' + s))));
  columns.push_back(table.addColumn(Kestrane::Unnamed, "Time [s]"));
  columns.push_back(table.addColumn(Kestrane::Unnamed, "Run Index"));
  for (int p = 0; p < parameters; ++p)
    columns.push_back(table.addColumn(Kestrane::Parameter, "k" + std::to_string(p + 1)));
}

BenchScan make(std::string const& name)
{
  BenchScan scan;
  scan.table = boost::make_shared<LinePlotTable>();
  scan.table->trajectoryCount = static_cast<std::uint64_t>(runsOf(name));
  scan.table->trajectoryLength = BenchColumns::times;
  std::vector<double*> columns;
  nameColumns(*scan.table, columns);
  BenchColumns filled = fillColumns(name, columns);
  scan.brush = std::move(filled.brush);
  scan.wide = std::move(filled.wide);
  for (int p = 0; p < parameters; ++p) {
    double const* values = columns[static_cast<std::size_t>(BenchColumns::firstParameter + p)];
    auto [low, high] = std::minmax_element(values, values + scan.table->rows());
    scan.table->parameterBounds.emplace_back(*low, *high);
  }
  return scan;
}

} // namespace

BenchScan const& benchScan(std::string const& name)
{
  // One at a time: the largest takes 2 GB.
  static std::map<std::string, BenchScan> scans;
  auto found = scans.find(name);
  if (found != scans.end()) return found->second;
  scans.clear();
  return scans.emplace(name, make(name)).first->second;
}

vtkSmartPointer<vtkSelection> rowSelection(std::vector<long long> const& rows)
{
  vtkNew<vtkIdTypeArray> ids;
  ids->SetNumberOfTuples(static_cast<vtkIdType>(rows.size()));
  std::copy(rows.begin(), rows.end(), ids->GetPointer(0));
  vtkNew<vtkSelectionNode> node;
  node->SetFieldType(vtkSelectionNode::POINT);
  node->SetContentType(vtkSelectionNode::INDICES);
  node->SetSelectionList(ids);
  auto selection = vtkSmartPointer<vtkSelection>::New();
  selection->AddNode(node);
  return selection;
}

} // namespace runsieve::bench
