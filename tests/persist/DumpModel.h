#pragma once

#include "support/PlotParts.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace runsieve::test {

/// What a dump of any bytes says, read by hand: behind the end numbers are 0 and names are empty.
class DumpModel
{
public:
  struct Column
  {
    std::string name;
    bool isDouble;
    std::vector<double> values;
  };

  std::vector<Kestrane::TypedConcentrationName> names;
  std::vector<Column> columns;

  /// None for counts that no dump of this size can hold.
  static std::optional<DumpModel> read(QByteArray const& bytes)
  {
    DumpModel model(bytes);
    if (!model.readAll()) return std::nullopt;
    return model;
  }

private:
  explicit DumpModel(QByteArray bytes) : rest(std::move(bytes)) {}

  bool readAll()
  {
    int const nameCount = number();
    if (!isSmall(nameCount)) return false;
    for (int i = 0; i < nameCount; ++i) {
      auto const type = static_cast<Kestrane::DataType>(number());
      names.emplace_back(type, text());
    }
    int const columnCount = number();
    int const rowCount = number();
    if (columnCount > 0 && !(isSmall(columnCount) && isSmall(rowCount))) return false;
    for (int c = 0; c < columnCount; ++c) {
      Column column{text(), bits(1) != 0, {}};
      for (int row = 0; row < rowCount; ++row)
        column.values.push_back(column.isDouble ? real() : static_cast<double>(number()));
      columns.push_back(column);
    }
    return true;
  }

  static bool isSmall(int count) { return count >= 0 && count <= 1000; }

  std::uint64_t bits(int size)
  {
    if (rest.size() < size) {
      rest.clear();
      return 0;
    }
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i) value = value << 8 | static_cast<unsigned char>(rest[i]);
    rest.remove(0, size);
    return value;
  }

  int number() { return static_cast<int>(static_cast<std::uint32_t>(bits(4))); }

  double real()
  {
    std::uint64_t const raw = bits(8);
    double value = 0;
    std::memcpy(&value, &raw, sizeof value);
    return value;
  }

  std::string text()
  {
    auto const length = static_cast<std::uint32_t>(bits(4));
    if (length == 0xffffffff || length % 2 == 1) return {};
    if (length > static_cast<std::uint32_t>(rest.size())) {
      rest.clear();
      return {};
    }
    std::string found;
    for (std::uint32_t i = 0; i < length; i += 2) {
      auto const unit = static_cast<unsigned>(bits(2));
      found += unit > 255 ? '?' : static_cast<char>(unit);
    }
    return found;
  }

  QByteArray rest;
};

inline bool isSame(double a, double b)
{
  return std::memcmp(&a, &b, sizeof a) == 0;
}

inline void expectTable(DumpModel const& model, PlotContainer const& container)
{
  EXPECT_EQ(container.typedColumnNames, model.names);
  ASSERT_EQ(container.plotData->GetNumberOfColumns(), static_cast<vtkIdType>(model.columns.size()));
  for (std::size_t c = 0; c < model.columns.size(); ++c) {
    SCOPED_TRACE("column " + std::to_string(c));
    DumpModel::Column const& expected = model.columns[c];
    auto* array = vtkDataArray::SafeDownCast(container.plotData->GetColumn(static_cast<vtkIdType>(c)));
    ASSERT_TRUE(array);
    ASSERT_TRUE(array->GetName());
    EXPECT_EQ(array->GetName(), expected.name.substr(0, expected.name.find('\0')));
    EXPECT_TRUE(array->IsA(expected.isDouble ? "vtkDoubleArray" : "vtkIntArray"));
    ASSERT_EQ(array->GetNumberOfTuples(), static_cast<vtkIdType>(expected.values.size()));
    for (std::size_t row = 0; row < expected.values.size(); ++row)
      EXPECT_TRUE(isSame(array->GetComponent(static_cast<vtkIdType>(row), 0), expected.values[row])) << row;
  }
}

} // namespace runsieve::test
