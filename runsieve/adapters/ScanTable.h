#pragma once

#include <runsieve/core/scan/Scan.h>
#include <runsieve/records/LinePlotTable.h>
#include <runsieve/runsieve_export.h>

#include <boost/shared_ptr.hpp>

#include <string>

namespace runsieve {

/// A scan as plots borrow it: outputs, time, "Run Index", parameters.
///
/// The columns of the outputs are those of the scan and stay alive with the record; time, runs and parameters
/// are written out for each row. Runs are their keys where these are whole numbers that rise, else counted
/// from 0; text parameters are the numbers of their texts. Outputs without a type become type Molecule.
/// parameterBounds are the smallest and largest value of each parameter, NaN aside.
///
/// Plots take a column for the time or the run whose name holds "Time", "Value", "Period" or "Index". Names
/// of outputs that do are told apart by an invisible character; nameInScan() takes it out again, for titles
/// and lists.
[[nodiscard]] RUNSIEVE_EXPORT boost::shared_ptr<LinePlotTable> linePlotTableOf(Scan const& scan);

/// The name of an output in its scan, of one in a record or a table.
[[nodiscard]] RUNSIEVE_EXPORT std::string nameInScan(std::string name);

/// The scan in a record, whose outputs it borrows; the record lives as long as they. Runs have their numbers
/// as keys; values that are not finite make a run Short or Failed. \throw std::invalid_argument if the record
/// has no time or no "Run Index" column, or its runs have different times
[[nodiscard]] RUNSIEVE_EXPORT Scan scanOf(boost::shared_ptr<LinePlotTable> const& table);

} // namespace runsieve
