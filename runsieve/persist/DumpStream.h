#pragma once

#include <runsieve/records/TypedConcentrationName.h>

#include <QByteArray>

#include <vector>

class QDataStream;
class vtkTable;

/// The binary dump: typed names, then the columns of a table. Layout: docs/file_formats.md.
namespace runsieve {

/// A stream over bytes with the settings of the format, which are those of Qt 4.8: big-endian, doubles of 64
/// bits, strings in UTF-16.
void prepareDumpStream(QDataStream& stream);

using TypedNames = std::vector<Kestrane::TypedConcentrationName>;

/// \throw std::length_error if the bytes would be more than a QByteArray holds
QByteArray writeDump(TypedNames const& names, vtkTable* table);

/// Fills names and table, both empty at the start, from bytes of any kind. What stands in the bytes is read,
/// however many names and columns that are. Where they end too early, numbers are 0 and names are empty; up
/// to 1,000 columns are then made, as long as all that is made up behind the end takes no more memory than
/// the bytes themselves and `claimable` ones. \throw std::length_error, std::bad_array_new_length for a
/// negative number of names or rows, for more than 10,000 names behind the end, and for a column of which
/// only a part stands in the bytes and the rest exceeds that limit; what was read before stays
void readDump(QByteArray const& bytes, TypedNames& names, vtkTable* table, long long claimable = 16LL << 20);

} // namespace runsieve
