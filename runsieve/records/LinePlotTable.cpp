#include <runsieve/records/LinePlotTable.h>

#include <runsieve/core/kernels/HugePages.h>

double* LinePlotTable::addColumn(Kestrane::DataType type, std::string name)
{
  borrowColumn(type, std::move(name), std::shared_ptr<double[]>(new double[rows()]));
  // Selections read a few rows of every run: with small pages nearly each of them would miss the address
  // cache.
  runsieve::preferHugePages(columnData.back(), rows() * sizeof(double));
  return columnData.back();
}

void LinePlotTable::borrowColumn(Kestrane::DataType type, std::string name, std::shared_ptr<double[]> values)
{
  columnNames.emplace_back(type, std::move(name));
  columnData.push_back(values.get());
  storage.push_back(std::move(values));
}
