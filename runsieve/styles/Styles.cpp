#include <runsieve/styles/Styles.h>

#include <runsieve/styles/ErrorBarPlot.h>
#include <runsieve/styles/FitParameterDistributionPlot.h>
#include <runsieve/styles/MultiPlot.h>
#include <runsieve/styles/NotYetImplemented.h>
#include <runsieve/styles/ParallelCoordinatesPlot.h>
#include <runsieve/styles/ScatterPlot.h>
#include <runsieve/styles/ScatterPlot3D.h>
#include <runsieve/styles/ScatterPlotMatrix.h>
#include <runsieve/styles/SelectionCdfPlot.h>

namespace runsieve {

Style const& styleOf(plotStyles number)
{
  static Style const* const styles[] = {
      &scatterPlotBuilder,  &scatterPlotMatrixBuilder, &scatterPlot3DBuilder, &multiPlotBuilder,
      &selectionCdfBuilder, &errorBarBuilder,          &fitParameterBuilder,  &parallelCoordinatesBuilder};
  for (Style const* style : styles)
    if (style->number == number) return *style;
  return notYetImplementedBuilder;
}

} // namespace runsieve
