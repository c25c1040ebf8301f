#pragma once

#include <vtkSmartPointer.h>

class vtkTable;

namespace runsieve {

/// Minimum, quartiles and maximum over the runs of a stacked table, a row per time point, by the rule of
/// vtkOrderStatistics: columns of labels, Minimum, First Quartile, Median, Third Quartile and Maximum, then
/// "Range" and "QRange" of two components, then "Time", which shares the storage of the first run's times and
/// keeps it alive. Null without a complete run or one of the columns.
vtkSmartPointer<vtkTable> quartilesByTime(vtkTable* table, int x, int y, int stride);

} // namespace runsieve
