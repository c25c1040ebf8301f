#include <runsieve/selection/ColumnShrink.h>

#include <runsieve/records/PlotMetaData.h>

#include <vtkTable.h>

#include <algorithm>
#include <iostream>
#include <map>

namespace runsieve {

namespace {

void append(std::vector<int>& list, std::vector<int> const& more)
{
  list.insert(list.end(), more.begin(), more.end());
}

void sortUnique(std::vector<int>& list)
{
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
}

} // namespace

void keepColumnsInUse(vtkTable* table, PlotMetaData& settings,
                      std::vector<Kestrane::TypedConcentrationName>& names)
{
  std::vector<int> kept;
  std::vector<std::vector<int>*> const lists = {&settings.xColumns, &settings.yColumns, &settings.zColumns,
                                                &settings.parameterColumns};
  for (std::vector<int>* list : lists) append(kept, *list);
  for (std::size_t i = 0; i < names.size(); ++i)
    if (names[i].first == Kestrane::Unnamed) kept.push_back(static_cast<int>(i));
  const bool keepColor = settings.colorColumn > 0 && settings.colorColumn < table->GetNumberOfColumns();
  if (keepColor)
    kept.push_back(settings.colorColumn);
  else
    std::cerr << "invalid color column :" << settings.colorColumn << std::endl;
  sortUnique(kept);

  std::map<int, int> renumbered;
  for (int column : kept) renumbered.emplace(column, static_cast<int>(renumbered.size()));
  for (std::vector<int>* list : lists)
    for (int& column : *list) column = renumbered[column];
  if (keepColor) settings.colorColumn = renumbered[settings.colorColumn];

  std::vector<Kestrane::TypedConcentrationName> remaining;
  remaining.reserve(kept.size());
  for (vtkIdType c = table->GetNumberOfColumns() - 1; c >= 0; --c) {
    // A number past the end stays the last of the list and is never met: then nothing is kept.
    if (kept.empty() || kept.back() != c) {
      table->RemoveColumn(c);
      continue;
    }
    kept.pop_back();
    const auto i = static_cast<std::size_t>(c);
    if (i < names.size()) remaining.push_back(names[i]);
  }
  std::reverse(remaining.begin(), remaining.end());
  names.swap(remaining);
}

} // namespace runsieve
