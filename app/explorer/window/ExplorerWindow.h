#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/document/Opening.h"

#include <QMainWindow>

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace runsieve::app {

class Actions;
class GatesPane;
class Layout;
class ParametersPane;
class RunsPane;

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
  [[nodiscard]] Opening& opening() { return reader; }
  [[nodiscard]] RunsPane& runs() { return *runsPane; }
  [[nodiscard]] GatesPane& gates() { return *gatesPane; }
  [[nodiscard]] ParametersPane& parameters() { return *parametersPane; }
  [[nodiscard]] Actions& actions() { return *table; }
  [[nodiscard]] QString statusText() const;
  /// Whether nothing is being read, computed or drawn.
  [[nodiscard]] bool isSettled() const;

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

private:
  void buildCentre();
  void buildPanes();
  void buildStatus();
  void tell(QString const& text);
  void connectFileActions();
  void connectGateActions();
  void connectViewActions();
  void show(std::shared_ptr<Scan const> const& scan, ScanSource const& source, State const& state);
  void refreshActions();
  void refreshStatus();

  Document content;
  Opening reader;
  Actions* table = nullptr;
  QStackedWidget* centre = nullptr;
  RunsPane* runsPane = nullptr;
  Layout* layout = nullptr;
  GatesPane* gatesPane = nullptr;
  ParametersPane* parametersPane = nullptr;
  QLabel* status = nullptr;
  QPushButton* readingNotes = nullptr; ///< hidden if there is nothing to tell
  QProgressBar* progress = nullptr;    ///< hidden while nothing is read
  QToolButton* cancelling = nullptr;
};

/// Shows another window, which deletes itself when it is closed.
ExplorerWindow* newExplorerWindow();

} // namespace runsieve::app
