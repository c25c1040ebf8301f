#include <runsieve/persist/DumpStream.h>

#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkTable.h>

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <unordered_set>

namespace runsieve {

namespace {

// What a typed name and a column take in memory beside their characters and values.
constexpr long long bytesOfName = 64;
constexpr long long bytesOfColumn = 1024;
constexpr int mostNamesBehindEnd = 10000;  ///< empty names
constexpr int mostColumnsBehindEnd = 1000; ///< columns without a name
constexpr int bytesPerRead = 1 << 28;      ///< readRawData counts in int

/// What may still be made up behind the end of a dump. The counts in it are claims, and a damaged one claims
/// anything; what stands in the bytes has no limit.
class Allowance
{
public:
  Allowance(int dumpSize, long long claimable) : left(claimable + dumpSize) {}

  bool take(long long bytes)
  {
    left -= bytes;
    return left >= 0;
  }

private:
  long long left;
};

/// Reads big-endian values; those that the stream does not hold are 0.
template <class Value> void readValues(QDataStream& stream, Value* values, qint32 count)
{
  auto* bytes = reinterpret_cast<char*>(values);
  const long long wanted = static_cast<long long>(count) * static_cast<long long>(sizeof(Value));
  long long got = 0;
  while (got < wanted) {
    const int read =
        stream.readRawData(bytes + got, static_cast<int>(std::min<long long>(wanted - got, bytesPerRead)));
    if (read <= 0) break;
    got += read;
  }
  const auto whole = static_cast<qint32>(got / static_cast<long long>(sizeof(Value)));
  qFromBigEndian<Value>(values, whole, values);
  std::fill(values + whole, values + count, Value(0));
}

template <class Array, class Value> vtkSmartPointer<vtkDataArray> readColumn(QDataStream& stream, qint32 rows)
{
  std::unique_ptr<Value[]> values(new Value[static_cast<std::size_t>(rows)]);
  readValues(stream, values.get(), rows);
  auto column = vtkSmartPointer<Array>::New();
  column->SetArray(values.release(), rows, 0, Array::VTK_DATA_ARRAY_DELETE);
  return column;
}

/// Adds columns in linear time. A second column of a name takes the place of the first, as in any vtkTable;
/// nameless ones stand side by side.
class ColumnAdder
{
public:
  explicit ColumnAdder(vtkTable* itsTable) : table(itsTable) {}

  void add(vtkDataArray* column, QString const& text)
  {
    const std::string name = text.toLatin1().constData(); // up to a zero, as VTK keeps it
    const bool known = !name.empty() && !names.insert(name).second;
    if (known) column->SetName(name.c_str());
    table->AddColumn(column); // searches for the name, if it has one, among all columns
    if (!known) column->SetName(name.c_str());
  }

private:
  vtkTable* table;
  std::unordered_set<std::string> names;
};

void readNames(QDataStream& stream, TypedNames& names, Allowance& allowance)
{
  qint32 count = 0;
  stream >> count;
  if (count < 0) throw std::length_error("A dump with a negative number of names.");
  int behindEnd = 0;
  for (qint32 i = 0; i < count; ++i) {
    if (stream.atEnd() && (++behindEnd > mostNamesBehindEnd || !allowance.take(bytesOfName)))
      throw std::length_error("A dump that claims more names than it holds.");
    qint32 type = 0;
    QString name;
    stream >> type >> name;
    names.emplace_back(static_cast<Kestrane::DataType>(type), name.toLatin1().toStdString());
  }
}

void readColumns(QDataStream& stream, vtkTable* table, Allowance& allowance)
{
  qint32 columns = 0;
  qint32 rows = 0;
  stream >> columns >> rows;
  ColumnAdder adder(table);
  int behindEnd = 0;
  for (qint32 c = 0; c < columns; ++c) {
    if (stream.atEnd() && (++behindEnd > mostColumnsBehindEnd || !allowance.take(bytesOfColumn))) return;
    QString name;
    bool isDouble = false;
    stream >> name >> isDouble;
    if (rows < 0) throw std::bad_array_new_length();
    const long long bytes =
        static_cast<long long>(rows) * static_cast<long long>(isDouble ? sizeof(double) : sizeof(qint32));
    if (!allowance.take(std::max(bytes - stream.device()->bytesAvailable(), 0LL))) {
      if (stream.atEnd()) return; // nothing but claims
      throw std::length_error("A dump that claims more values than it holds.");
    }
    adder.add(isDouble ? readColumn<vtkDoubleArray, double>(stream, rows)
                       : readColumn<vtkIntArray, qint32>(stream, rows),
              name);
  }
}

} // namespace

void readDump(QByteArray const& bytes, TypedNames& names, vtkTable* table, long long claimable)
{
  QDataStream stream(bytes);
  prepareDumpStream(stream);
  Allowance allowance(bytes.size(), claimable);
  readNames(stream, names, allowance);
  readColumns(stream, table, allowance);
}

} // namespace runsieve
