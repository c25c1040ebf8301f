#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/gates/GateCounts.h"

#include <QDialog>
#include <QTimer>

#include <cstddef>
#include <optional>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace runsieve::app {

class GateFields;

/// A gate typed by its numbers, or as text, with the runs that it would let through. The charts show it as it
/// is typed.
class GateForm : public QDialog
{
  Q_OBJECT

public:
  /// \param index of the gate to change; nothing for a new one
  GateForm(Document& document, std::optional<std::size_t> index, QWidget* parent = nullptr);

  /// Asks in a form, and changes the document in one step. \return false if the user thought better of it
  static bool edit(Document& document, std::optional<std::size_t> index, QWidget* parent);

  /// Whether the counts are those of what is typed.
  [[nodiscard]] bool isSettled() const { return !soon.isActive() && !counts.isBusy(); }

public Q_SLOTS:
  void accept() override;
  void reject() override;

private:
  void build();
  void begin();
  void takeFields();
  void takeText();
  void check();
  void tell(QString const& text, bool isError);
  void preview();

  Document& document;
  std::optional<std::size_t> index;
  std::optional<Gate> typed; ///< nothing while it cannot be understood
  GateCounts counts;
  QTimer soon; ///< until the preview, so that typing does not stutter
  QLineEdit* name = nullptr;
  GateFields* fields = nullptr;
  QLineEdit* text = nullptr;
  QLabel* message = nullptr;
  QLabel* passing = nullptr;
  QDialogButtonBox* buttons = nullptr;
};

} // namespace runsieve::app
