#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/window/Files.h"

#include <QMainWindow>

#include <memory>

class QStackedWidget;

namespace runsieve::app {

class Actions;
class ChangedFileBar;
class GatesPane;
class Layout;
class ParametersPane;
class ParameterTable;
class Plots;
class RunsPane;
class RunTable;
class SetsPane;
class StartPage;
class StatusLine;

/// The desktop explorer: a scan, its gates, and what they make of it. Nothing is open at first.
class ExplorerWindow : public QMainWindow
{
  Q_OBJECT

public:
  explicit ExplorerWindow(QWidget* parent = nullptr);
  ~ExplorerWindow() override;

  /// Begins to read a file beside the interface; what is open stays until that is done.
  void open(QString const& path, ReadOptions const& options = {});

  [[nodiscard]] Document& document() { return content; }
  [[nodiscard]] Files& files() { return *disk; }
  [[nodiscard]] RunsPane& runs() { return *runsPane; }
  [[nodiscard]] GatesPane& gates() { return *gatesPane; }
  [[nodiscard]] ParametersPane& parameters() { return *parametersPane; }
  [[nodiscard]] SetsPane& sets() { return *setsPane; }
  [[nodiscard]] Plots& storedPlots() { return *plots; }
  [[nodiscard]] Actions& actions() { return *table; }
  [[nodiscard]] QString statusText() const;
  /// Whether nothing is being read, computed or drawn.
  [[nodiscard]] bool isSettled() const;

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool focusNextPrevChild(bool next) override;

private:
  void buildCentre();
  void buildPanes();
  void connectFileActions();
  void connectExportActions();
  void connectGateActions();
  void connectViewActions();
  void connectSetActions();
  /// What the session keeps of the window itself.
  void keepView(Session& session) const;
  void showView(Session const& session);
  void showReading();
  void showGateMenu(QPoint const& at);
  void refresh();
  void refreshActions();
  void refreshKinds();

  Document content;
  Actions* table = nullptr;
  QStackedWidget* centre = nullptr;
  StartPage* start = nullptr;
  RunsPane* runsPane = nullptr;
  ChangedFileBar* changedBar = nullptr;
  Layout* layout = nullptr;
  GatesPane* gatesPane = nullptr;
  SetsPane* setsPane = nullptr;
  ParametersPane* parametersPane = nullptr;
  ParameterTable* parameterTable = nullptr;
  RunTable* runTable = nullptr;
  std::unique_ptr<Files> disk;
  StatusLine* status = nullptr;
  Plots* plots = nullptr;
};

/// Shows another window, which deletes itself when it is closed.
ExplorerWindow* newExplorerWindow();

} // namespace runsieve::app
