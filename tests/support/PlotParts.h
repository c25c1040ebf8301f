#pragma once

// What tests reach through the members of a PlotContainer, whose header only declares it.
#include <runsieve/plot/PlotContainer.h>
#include <runsieve/records/Distribution.h>
#include <runsieve/records/FitRun.h>
#include <runsieve/records/FitSettings.h>
#include <runsieve/records/LinePlotData.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/records/ParameterSelection.h>
#include <runsieve/records/SobolPostProcessResult.h>

#include <vtkAnnotationLink.h>
#include <vtkChart.h>
#include <vtkChartMatrix.h>
#include <vtkChartParallelCoordinates.h>
#include <vtkChartXYZ.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkExtractSelectedRows.h>
#include <vtkIntArray.h>
#include <vtkScatterPlotMatrix.h>
#include <vtkStringArray.h>
#include <vtkTable.h>

#include <QByteArray>
#include <QStringList>
