// Any bytes are read as a dump. What comes out must be a whole table, and must write and read back as itself.
#include <runsieve/persist/DumpStream.h>

#include <vtkAbstractArray.h>
#include <vtkNew.h>
#include <vtkTable.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {

constexpr long long little = 1 << 16; ///< so that most of the time goes into different inputs
constexpr long long plenty = 1 << 28;

void require(bool condition)
{
  if (!condition) std::abort();
}

/// Whether the bytes were accepted.
bool read(QByteArray const& bytes, runsieve::TypedNames& names, vtkTable* table, long long claimable)
{
  try {
    runsieve::readDump(bytes, names, table, claimable);
    return true;
  } catch (std::length_error const&) {
  } catch (std::bad_alloc const&) {
  }
  return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  const QByteArray bytes(reinterpret_cast<char const*>(data), static_cast<int>(size));
  runsieve::TypedNames names;
  vtkNew<vtkTable> table;
  const bool accepted = read(bytes, names, table, little);
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c)
    require(table->GetColumn(c)->GetNumberOfTuples() == table->GetNumberOfRows());
  if (!accepted) return 0;

  const QByteArray written = runsieve::writeDump(names, table);
  runsieve::TypedNames again;
  vtkNew<vtkTable> copy;
  require(read(written, again, copy, plenty));
  require(again.size() == names.size() && copy->GetNumberOfColumns() == table->GetNumberOfColumns());
  require(runsieve::writeDump(again, copy) == written);
  return 0;
}
