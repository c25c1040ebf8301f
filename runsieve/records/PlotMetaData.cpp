#include <runsieve/records/PlotMetaData.h>

PlotMetaData::PlotMetaData(QObject* parent) : QObject(parent) {}

PlotMetaData::PlotMetaData(PlotMetaData const& o)
    : QObject(nullptr), xColumns(o.xColumns), yColumns(o.yColumns), zColumns(o.zColumns), red(o.red),
      green(o.green), blue(o.blue), alpha(o.alpha), markerStyle(o.markerStyle), pointSize(o.pointSize),
      plotTitle(o.plotTitle), xLabel(o.xLabel), yLabel(o.yLabel), colorColumn(o.colorColumn),
      parameterColumns(o.parameterColumns), useSolidColor(o.useSolidColor),
      rankedParametersValid(o.rankedParametersValid), sourceName(o.sourceName), sourceId(o.sourceId),
      coordinateWindow(o.coordinateWindow), plotStyle(o.plotStyle), plotLine(o.plotLine), stride(o.stride),
      logX(o.logX), limitColumVisibility(o.limitColumVisibility), lineWidth(o.lineWidth),
      pThreshold(o.pThreshold), ksThreshold(o.ksThreshold), useDensity(o.useDensity),
      commonDensityScale(o.commonDensityScale), showQuantiles(o.showQuantiles),
      logParameterAxes(o.logParameterAxes)
{}

template <class T> void PlotMetaData::change(T& field, T value)
{
  if (field == value) return;
  field = value;
  Q_EMIT redrawNeeded();
}

void PlotMetaData::setPlotStyle(plotStyles style)
{
  change(plotStyle, style);
}

void PlotMetaData::setPlotLine(bool lines)
{
  change(plotLine, lines);
}

void PlotMetaData::setStride(int rowsPerRun)
{
  stride = rowsPerRun;
}

void PlotMetaData::setLogX(bool log)
{
  change(logX, log);
}

void PlotMetaData::setLimitColumVisibility(bool limit)
{
  change(limitColumVisibility, limit);
}

void PlotMetaData::setLineWidth(double pixels)
{
  lineWidth = pixels;
}

void PlotMetaData::setPThreshold(double largest)
{
  change(pThreshold, largest);
}

void PlotMetaData::setKsThreshold(double smallest)
{
  change(ksThreshold, smallest);
}

void PlotMetaData::setUseDensity(bool density)
{
  change(useDensity, density);
}

void PlotMetaData::setCommonDensityScale(bool common)
{
  change(commonDensityScale, common);
}

void PlotMetaData::setShowQuantiles(bool show)
{
  change(showQuantiles, show);
}

void PlotMetaData::setLogParameterAxes(bool log)
{
  change(logParameterAxes, log);
}
