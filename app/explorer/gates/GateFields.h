#pragma once

#include <runsieve/core/gate/Gate.h>
#include <runsieve/core/scan/Scan.h>

#include <QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;

namespace runsieve::app {

class SearchableBox;

/// A gate as a form of boxes and numbers, for one scan.
class GateFields : public QWidget
{
  Q_OBJECT

public:
  explicit GateFields(Scan const& scan, QWidget* parent = nullptr);

  /// What the form says. \throw GateError in words for what cannot be understood
  [[nodiscard]] Gate gate() const;
  /// Shows a gate; edited() does not follow.
  void setGate(Gate const& gate);

  /// A row of a form: a title of the width that all rows of this one have, and a field.
  [[nodiscard]] QWidget* rowOf(QString const& title, QWidget* field) const;

Q_SIGNALS:
  void edited();

private:
  /// A column that a gate can be on.
  struct Column
  {
    std::string name; ///< as a gate is to say it
    bool isParameter;
    std::size_t position;
  };

  void build();
  void addPair(QString const& title, QWidget*& row, QLineEdit*& from, QLineEdit*& to);
  void addRow(QString const& title, QWidget* field, QString const& tip);
  void addRows();
  void buildLists();
  void listColumns();
  void showRows();
  void choose(Gate const& gate);
  [[nodiscard]] GateKind kind() const;
  [[nodiscard]] Column const* column() const;
  void takeTimes(Gate& gate) const;
  void takeList(Gate& gate) const;

  Scan const& scan;
  QVBoxLayout* form = nullptr;
  QComboBox* kinds = nullptr;
  SearchableBox* columns = nullptr;
  std::vector<Column> offered;
  std::string unknownColumn; ///< of a gate that does not fit the scan
  QWidget* times = nullptr;
  QLineEdit* firstTime = nullptr;
  QLineEdit* lastTime = nullptr;
  QWidget* values = nullptr;
  QLineEdit* low = nullptr;
  QLineEdit* high = nullptr;
  QLineEdit* texts = nullptr; ///< of Is
  QLineEdit* runs = nullptr;
  QWidget* statuses = nullptr;
  std::vector<QCheckBox*> statusChecks;
  QWidget* cluster = nullptr;
  QSpinBox* clusterNumber = nullptr;
  QSpinBox* clusterCount = nullptr;
  QComboBox* clusterMode = nullptr;
  QCheckBox* inverted = nullptr;
};

} // namespace runsieve::app
