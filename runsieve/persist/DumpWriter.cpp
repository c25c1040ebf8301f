#include <runsieve/persist/DumpStream.h>

#include <runsieve/persist/EvenTable.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkTable.h>

#include <QDataStream>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace runsieve {

void prepareDumpStream(QDataStream& stream)
{
  stream.setVersion(QDataStream::Qt_4_8);
}

namespace {

constexpr vtkIdType chunk = 1 << 14; ///< values turned into big-endian order at a time

/// A value of any column as an integer: what is no number becomes 0, and what is too large the largest one.
qint32 intAt(vtkDataArray* column, vtkIdType row)
{
  constexpr double lowest = std::numeric_limits<qint32>::min();
  constexpr double highest = std::numeric_limits<qint32>::max();
  const double value = column ? column->GetComponent(row, 0) : 0.0;
  return std::isnan(value) ? 0 : static_cast<qint32>(std::clamp(value, lowest, highest));
}

/// Writes values in blocks; `value` gives that of a row.
template <class Value, class Function> void writeValues(QDataStream& stream, vtkIdType rows, Function&& value)
{
  std::vector<Value> native(static_cast<std::size_t>(std::min(rows, chunk)));
  std::vector<Value> swapped(native.size());
  for (vtkIdType first = 0; first < rows; first += chunk) {
    const vtkIdType count = std::min(chunk, rows - first);
    for (vtkIdType i = 0; i < count; ++i) native[static_cast<std::size_t>(i)] = value(first + i);
    qToBigEndian<Value>(native.data(), count, swapped.data());
    stream.writeRawData(reinterpret_cast<char const*>(swapped.data()),
                        static_cast<int>(count * sizeof(Value)));
  }
}

void writeColumn(QDataStream& stream, vtkAbstractArray* array, vtkIdType rows)
{
  auto* doubles = vtkDoubleArray::SafeDownCast(array);
  auto* numbers = vtkDataArray::SafeDownCast(array);
  stream << QString::fromLatin1(array->GetName()) << (doubles != nullptr);
  if (doubles)
    writeValues<double>(stream, rows, [doubles](vtkIdType row) { return doubles->GetComponent(row, 0); });
  else
    writeValues<qint32>(stream, rows, [numbers](vtkIdType row) { return intAt(numbers, row); });
}

/// An upper bound of the bytes that a table takes.
double bytesOf(TypedNames const& names, vtkTable* table)
{
  double bytes = 64.0;
  for (auto const& name : names) bytes += 8.0 + 2.0 * static_cast<double>(name.second.size());
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) {
    const char* name = table->GetColumnName(c);
    bytes += 16.0 + (name ? 2.0 * static_cast<double>(std::char_traits<char>::length(name)) : 0.0);
    bytes += static_cast<double>(table->GetNumberOfRows()) *
             (vtkDoubleArray::SafeDownCast(table->GetColumn(c)) ? sizeof(double) : sizeof(qint32));
  }
  return bytes;
}

} // namespace

QByteArray writeDump(TypedNames const& names, vtkTable* source)
{
  const vtkSmartPointer<vtkTable> table = evenTable(source);
  const double bytes = bytesOf(names, table);
  if (bytes > std::numeric_limits<int>::max())
    throw std::length_error("The table is too large for a dump of at most 2 GiB.");
  QByteArray dump;
  dump.reserve(static_cast<int>(bytes));
  QDataStream stream(&dump, QIODevice::WriteOnly);
  prepareDumpStream(stream);
  stream << static_cast<qint32>(names.size());
  for (auto const& [type, name] : names)
    stream << static_cast<qint32>(type) << QString::fromLatin1(name.data(), static_cast<int>(name.size()));
  const vtkIdType rows = table->GetNumberOfRows();
  stream << static_cast<qint32>(table->GetNumberOfColumns()) << static_cast<qint32>(rows);
  for (vtkIdType c = 0; c < table->GetNumberOfColumns(); ++c) writeColumn(stream, table->GetColumn(c), rows);
  return dump;
}

} // namespace runsieve
