#pragma once

#include <vector>

class QAbstractItemModel;
class QString;
class QTableView;

namespace runsieve::app {

/// A table of what a page has found: a row can be selected, columns are as wide as their texts, and some take
/// the room that is left. \param model outlives the table
[[nodiscard]] QTableView* resultTable(QAbstractItemModel& model, QString const& name,
                                      std::vector<int> const& wideColumns);

} // namespace runsieve::app
