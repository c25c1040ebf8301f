#include <runsieve/records/LinePlotTable.h>

#include <runsieve/core/kernels/HugePages.h>

double* LinePlotTable::addColumn(Kestrane::DataType type, std::string name)
{
  storage.emplace_back(new double[rows()]);
  columnNames.emplace_back(type, std::move(name));
  columnData.push_back(storage.back().get());
  // Selections read a few rows of every run: with small pages nearly each of them would miss the address cache.
  runsieve::preferHugePages(columnData.back(), rows() * sizeof(double));
  return columnData.back();
}
