#pragma once

#include "app/explorer/document/Document.h"

#include <QWidget>

#include <cstddef>
#include <optional>

class QComboBox;
class QLabel;
class QTableView;
class QToolButton;

namespace runsieve::app {

class GateListModel;

/// The gates as a list: switched on and off, named, put in order, edited, with the runs left after each.
class GatesPane : public QWidget
{
  Q_OBJECT

public:
  explicit GatesPane(Document& document, QWidget* parent = nullptr);

  [[nodiscard]] QTableView* list() const { return view; }

public Q_SLOTS:
  /// Asks for a new gate in a form.
  void typeGate();
  /// These do nothing without a selected gate.
  void editSelected();
  void toggleSelected();
  void invertSelected();
  void duplicateSelected();
  void deleteSelected();
  void moveSelectedUp();
  void moveSelectedDown();

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void buildList();
  void buildButtons();
  QToolButton* addButton(QString const& text, QString const& tip, void (GatesPane::*slot)());
  void refresh();
  void takeSelection();
  void showSelection();
  void fitDetails();
  void fitNames();
  void showMenu(QPoint const& at);

  Document& document;
  GateListModel* model = nullptr;
  QTableView* view = nullptr;
  QLabel* empty = nullptr;   ///< over the list, what to do without gates
  QLabel* details = nullptr; ///< of the selected gate, what needs more room than a row; hidden without
  QLabel* total = nullptr;
  QComboBox* join = nullptr;
  QWidget* buttons = nullptr;
  QToolButton* creating = nullptr;
  QToolButton* editing = nullptr;
  QToolButton* up = nullptr;
  QToolButton* down = nullptr;
  QToolButton* inverting = nullptr;
  QToolButton* deleting = nullptr;
};

} // namespace runsieve::app
