#include <runsieve/plot/PlotContainer.h>

#include <runsieve/plot/TableAccess.h>
#include <runsieve/stats/RunIndex.h>

#include <algorithm>
#include <iostream>
#include <map>

using namespace runsieve;

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

void PlotContainer::shrinkToColumnSelection()
{
  if (!coordinateWindows.empty()) {
    // Its keys hold column numbers, which are about to change.
    auto window = coordinateWindows.find(
        ReducedMetaData{entry0(metaData->xColumns), entry0(metaData->yColumns), metaData->getPlotStyle()});
    if (window != coordinateWindows.end()) metaData->coordinateWindow = window->second;
    coordinateWindows.clear();
  }

  std::vector<int> kept;
  std::vector<std::vector<int>*> const lists = {&metaData->xColumns, &metaData->yColumns, &metaData->zColumns,
                                                &metaData->parameterColumns};
  for (std::vector<int>* list : lists) append(kept, *list);
  for (std::size_t i = 0; i < typedColumnNames.size(); ++i)
    if (typedColumnNames[i].first == Kestrane::Unnamed) kept.push_back(static_cast<int>(i));
  const bool keepColor = metaData->colorColumn > 0 && metaData->colorColumn < plotData->GetNumberOfColumns();
  if (keepColor)
    kept.push_back(metaData->colorColumn);
  else
    std::cerr << "invalid color column :" << metaData->colorColumn << std::endl;
  sortUnique(kept);

  std::map<int, int> renumbered;
  for (int column : kept) renumbered.emplace(column, static_cast<int>(renumbered.size()));
  for (std::vector<int>* list : lists)
    for (int& column : *list) column = renumbered[column];
  if (keepColor) metaData->colorColumn = renumbered[metaData->colorColumn];

  std::vector<Kestrane::TypedConcentrationName> names;
  names.reserve(kept.size());
  for (vtkIdType c = plotData->GetNumberOfColumns() - 1; c >= 0; --c) {
    // A number past the end stays the last of the list and is never met: then nothing is kept.
    if (kept.empty() || kept.back() != c) {
      plotData->RemoveColumn(c);
      continue;
    }
    kept.pop_back();
    const auto i = static_cast<std::size_t>(c);
    if (i < typedColumnNames.size()) names.push_back(typedColumnNames[i]);
  }
  std::reverse(names.begin(), names.end());
  typedColumnNames.swap(names);
  runIndex->clear();
  if (auto flags = vtkSmartPointer<vtkIntArray>::Take(getCurrentSelection())) plotData->AddColumn(flags);
}
