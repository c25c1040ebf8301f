#pragma once

#include <runsieve/core/scan/Scan.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/runsieve_export.h>

#include <boost/shared_ptr.hpp>

namespace runsieve {

/// A scan as plots borrow it: outputs, time, "Run Index", parameters.
///
/// The columns of the outputs are those of the scan and stay alive with the record; time, runs and parameters
/// are written out for each row. Runs are their keys where these are whole numbers that rise, else counted
/// from 0; text parameters are the numbers of their texts. Outputs without a type become type Molecule.
/// parameterBounds are the smallest and largest value of each parameter, NaN aside.
[[nodiscard]] RUNSIEVE_EXPORT boost::shared_ptr<LinePlotTable> linePlotTableOf(Scan const& scan);

} // namespace runsieve
