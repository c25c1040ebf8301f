#include <runsieve/tables/WindowKey.h>

#include <runsieve/records/PlotMetaData.h>
#include <runsieve/tables/TableAccess.h>

namespace runsieve {

ReducedMetaData windowKey(PlotMetaData const& settings)
{
  return {entry0(settings.xColumns), entry0(settings.yColumns), settings.getPlotStyle()};
}

} // namespace runsieve
