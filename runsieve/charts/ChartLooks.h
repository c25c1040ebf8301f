#pragma once

class vtkAnnotationLink;
class vtkChart;

namespace runsieve {

/// Gives a chart the title, mouse actions, legend, link and axes of a new one, without plots. Observers stay.
void resetLooks(vtkChart* chart);

/// Takes back what shapeAsDistribution() did to a chart, and nothing else.
void undoDistributionShape(vtkChart* chart);

/// Makes a chart that of a density with three ticks along x and none along y, which the mouse does not reach.
/// \param decimals of the numbers along x
void shapeAsDistribution(vtkChart* chart, int decimals);

/// Lets the user select rows by a drag. A click selects nothing and announces nothing: VTK would add the
/// point to the link without a word, and count the click as a pan.
void makeSelectable(vtkChart* chart, vtkAnnotationLink* link);

/// Binds neither pan nor zoom to a button.
void fixView(vtkChart* chart);

/// To be called after the scales of a chart's axes were set: the rounded bounds of a linear axis begin at 0,
/// which would keep a log scale from becoming active.
void settleLogScale(vtkChart* chart, bool log);

} // namespace runsieve
