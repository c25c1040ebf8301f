#include "app/explorer/gates/GateEdits.h"
#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/parameters/ParametersPane.h"
#include "app/explorer/runs/RunsPane.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/ShellCommand.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/window/Actions.h"
#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/Appearance.h"
#include "app/explorer/window/CommandSearch.h"
#include "app/explorer/window/ExplorerWindow.h"
#include "app/explorer/window/FigureOf.h"
#include "app/explorer/window/HelpDialogs.h"
#include "app/explorer/window/Layout.h"
#include "app/explorer/window/LimitsDialog.h"
#include "app/explorer/window/MethodDialog.h"
#include "app/explorer/window/Plots.h"
#include "app/explorer/window/RecentMenu.h"
#include "app/explorer/window/StatusLine.h"
#include "app/scan/ReadingText.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMessageBox>

#include <iterator>

namespace runsieve::app {

namespace {

/// In the order of the pages.
constexpr char const* pageActions[] = {"page.charts", "page.pairs", "page.box", "page.parallel",
                                       "page.stability"};

} // namespace

void ExplorerWindow::showReading()
{
  if (!content.isOpen()) return;
  QStringList lines;
  for (std::string const& line : readingLines(content.scan(), content.source().report))
    lines << QString::fromStdString(line);
  QMessageBox box(this);
  box.setWindowTitle("How the file was read");
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setText(lines.isEmpty() ? QString("Nothing was guessed.") : lines.join('\n'));
  box.exec();
}

void ExplorerWindow::connectFileActions()
{
  table->on("file.open", [this] { disk->chooseFile(); });
  table->on("file.folder", [this] { disk->chooseFolder(); });
  auto* recent = new RecentMenu(this);
  connect(recent, &RecentMenu::fileWanted, this,
          [this](QString const& path) { open(path, RecentFiles::optionsOf(path)); });
  table->menu("&File")->insertMenu(table->at("file.example"), recent);
  table->on("file.example", [this] { disk->openExample(); });
  table->on("file.reread", [this] { disk->reread(); });
  table->on("file.reading", [this] { showReading(); });
  connect(status, &StatusLine::notesWanted, this, &ExplorerWindow::showReading);
  table->on("file.save", [this] { disk->save(); });
  table->on("file.saveas", [this] { disk->saveAs(); });
  table->on("file.window", [] { newExplorerWindow(); });
  table->on("file.close", [this] { close(); });
  table->on("file.quit", [] { QApplication::closeAllWindows(); });
  table->on("edit.commands", [this] {
    QList<QAction*> all;
    for (ActionEntry const& entry : actionTable()) all << table->at(entry.id);
    CommandSearch(all, this).exec();
  });
  table->on("help.guide", [this] { showGuide(this); });
  table->on("help.keys", [this] { showKeys(this); });
  table->on("help.about", [this] { showAbout(this); });
  // In the middle of a drag only that is taken back.
  auto const step = [this](void (QUndoStack::*move)()) {
    if (content.previewedGate())
      content.giveUpPreview();
    else
      (content.undoStack().*move)();
  };
  table->on("edit.undo", [step] { step(&QUndoStack::undo); });
  table->on("edit.redo", [step] { step(&QUndoStack::redo); });
}

void ExplorerWindow::connectExportActions()
{
  table->on("file.figure", [this] { exportFigure(content, runsPane->zoom(), this); });
  table->on("file.runs", [this] { runTable->exportPassingScan(); });
  table->on("file.plot", [this] { plots->save(); });
  table->on("file.command", [this] {
    auto const shown = [this](Session& session) { keepView(session); };
    QGuiApplication::clipboard()->setText(QString::fromStdString(commandOf(content, shown)));
    status->tell("Copied: the commands of this table and this picture");
  });
}

void ExplorerWindow::connectSetActions()
{
  table->on("set.keep", [this] { setsPane->keepPassingRuns(); });
  table->on("set.type", [this] { setsPane->typeRuns(); });
  table->on("set.file", [this] { setsPane->chooseFile(); });
  table->on("set.cluster", [this] { setsPane->groupRuns(); });
  table->on("set.failed", [this] { setsPane->keepIncomplete(); });
  connect(setsPane, &SetsPane::groupingBegun, this, [this] { layout->bring(*setsPane); });
  connect(setsPane, &SetsPane::toldAnew, this, [this](QString const& text) { status->tell(text); });
}

void ExplorerWindow::connectGateActions()
{
  table->on("tool.gate", [this] { runsPane->setTool(RunsTool::Gate); });
  table->on("tool.pan", [this] { runsPane->setTool(RunsTool::Pan); });
  table->on("tool.zoom", [this] { runsPane->setTool(RunsTool::Zoom); });
  table->at("tool.gate")->setChecked(true);
  table->on("gate.new", [this] { gatesPane->typeGate(); });
  table->on("gate.edit", [this] { gatesPane->editSelected(); });
  table->on("gate.toggle", [this] { gatesPane->toggleSelected(); });
  table->on("gate.negate", [this] { gatesPane->invertSelected(); });
  table->on("gate.delete", [this] { gatesPane->deleteSelected(); });
  auto const kind = [this](char const* id, GateKind wanted) {
    table->on(id, [=] {
      if (auto const gate = content.selectedGate()) setGateKind(content, *gate, wanted);
      refreshActions();
    });
  };
  kind("kind.all", GateKind::Inside);
  kind("kind.ever", GateKind::Ever);
  kind("kind.never", GateKind::Never);
  kind("kind.crosses", GateKind::Crosses);
  connect(runsPane, &RunsPane::gateMenuWanted, this, &ExplorerWindow::showGateMenu);
  table->on("gate.clear",
            [this] { content.change("Delete all gates", [](State& state) { state.gates.clear(); }); });
  table->on("join.all",
            [this] { content.change("Pass all gates", [](State& s) { s.join = GateJoin::All; }); });
  table->on("join.any",
            [this] { content.change("Pass any gate", [](State& s) { s.join = GateJoin::Any; }); });
}

void ExplorerWindow::showGateMenu(QPoint const& at)
{
  QMenu menu(this);
  for (char const* id : {"gate.edit", "gate.toggle", "gate.negate", "gate.delete"})
    menu.addAction(table->at(id));
  menu.addSeparator();
  for (char const* id : {"kind.all", "kind.ever", "kind.never", "kind.crosses"})
    menu.addAction(table->at(id));
  menu.exec(at);
}

void ExplorerWindow::connectViewActions()
{
  auto const look = [this](char const* id, RunsLook wanted) {
    table->on(id, [=] { content.change("Look of the runs", [&](State& s) { s.view.runsLook = wanted; }); });
  };
  look("look.density", RunsLook::Density);
  look("look.lines", RunsLook::Lines);
  look("look.bands", RunsLook::Bands);
  look("look.wholebands", RunsLook::WholeBands);
  auto const focus = [this](char const* id, Focus wanted) {
    table->on(id, [=] { content.change("Focus", [&](State& s) { s.view.focus = wanted; }); });
  };
  focus("focus.all", Focus::All);
  focus("focus.faded", Focus::Faded);
  focus("focus.hidden", Focus::Hidden);
  auto const parameters = [this](char const* id, ParameterLook wanted) {
    table->on(id, [=] {
      content.change("Look of the parameters", [&](State& s) { s.view.parameterLook = wanted; });
    });
  };
  parameters("parameters.curves", ParameterLook::Curves);
  parameters("parameters.densities", ParameterLook::Densities);
  parameters("parameters.scatter", ParameterLook::Scatter);
  for (std::size_t page = 0; page < std::size(pageActions); ++page)
    table->on(pageActions[page], [this, page] {
      layout->bring(*parametersPane);
      parametersPane->showPage(static_cast<ParametersPage>(page));
    });
  table->on("view.addoutput", [this] {
    if (!runsPane->addOutput())
      status->tell(content.state().view.outputs.size() == ViewState::mostOutputs
                       ? QString("At most %1 outputs are shown at once").arg(ViewState::mostOutputs)
                       : QString("All outputs are shown"));
  });
  table->on("view.limits", [this] { editLimits(content, runsPane->zoom(), this); });
  table->on("method.edit", [this] { editMethod(content, this); });
  table->on("zoom.reset", [this] { runsPane->zoom().reset(); });
  table->on("zoom.back", [this] { runsPane->zoom().back(); });
  table->on("zoom.forward", [this] { runsPane->zoom().forward(); });
  table->on("view.composite", [this] { plots->showComposite(disk->title()); });
  table->on("theme.desktop", [] { chooseAppearance(Appearance::Desktop); });
  table->on("theme.light", [] { chooseAppearance(Appearance::Light); });
  table->on("theme.dark", [] { chooseAppearance(Appearance::Dark); });
  table->on("view.docks", [this] { layout->restore(); });
  table->on("pins.clear", [this] { content.pin({}); });
}

void ExplorerWindow::refreshKinds()
{
  auto const chosen = content.selectedGate();
  Gate const* gate = chosen ? &content.state().gates[*chosen].gate : nullptr;
  bool const hasKind = gate && gate->kind <= GateKind::Crosses && gate->span;
  char const* const kinds[] = {"kind.all", "kind.ever", "kind.never", "kind.crosses"};
  for (char const* id : kinds) table->at(id)->setEnabled(hasKind);
  if (hasKind) table->at(kinds[static_cast<int>(gate->kind)])->setChecked(true);
}

void ExplorerWindow::refreshActions()
{
  const bool open = content.isOpen();
  for (char const* id :
       {"file.reread", "file.reading", "file.save", "file.saveas", "file.figure", "file.runs", "file.plot",
        "file.command", "gate.new", "view.addoutput", "view.limits", "view.composite", "set.keep", "set.type",
        "set.file", "set.cluster", "set.failed", "method.edit", "zoom.reset"})
    table->at(id)->setEnabled(open);
  for (char const* id : pageActions) table->at(id)->setEnabled(open);
  table->at(pageActions[static_cast<int>(parametersPane->page())])->setChecked(true);
  QUndoStack& steps = content.undoStack();
  table->at("edit.undo")->setEnabled(steps.canUndo());
  table->at("edit.undo")->setText(steps.canUndo() ? "&Undo " + steps.undoText() : QString("&Undo"));
  table->at("edit.redo")->setEnabled(steps.canRedo());
  table->at("edit.redo")->setText(steps.canRedo() ? "&Redo " + steps.redoText() : QString("&Redo"));
  for (char const* id : {"edit.undo", "edit.redo"})
    table->at(id)->setIconText(QString(id).endsWith("undo") ? "Undo" : "Redo");
  for (char const* id : {"gate.edit", "gate.toggle", "gate.negate", "gate.delete"})
    table->at(id)->setEnabled(content.selectedGate().has_value());
  State const& state = content.state();
  refreshKinds();
  table->at("gate.clear")->setEnabled(!state.gates.empty());
  table->at("pins.clear")->setEnabled(!content.pinnedRuns().empty());
  table->at("zoom.back")->setEnabled(runsPane->zoom().canGoBack());
  table->at("zoom.forward")->setEnabled(runsPane->zoom().canGoForward());
  ViewState const& view = state.view;
  char const* const looks[] = {"look.density", "look.lines", "look.bands", "look.wholebands"};
  char const* const focuses[] = {"focus.all", "focus.faded", "focus.hidden"};
  char const* const parameterLooks[] = {"parameters.curves", "parameters.densities", "parameters.scatter"};
  char const* const themes[] = {"theme.desktop", "theme.light", "theme.dark"};
  table->at(themes[static_cast<int>(chosenAppearance())])->setChecked(true);
  char const* const joins[] = {"join.all", "join.any"};
  table->at(looks[static_cast<int>(view.runsLook)])->setChecked(true);
  table->at(focuses[static_cast<int>(view.focus)])->setChecked(true);
  table->at(parameterLooks[static_cast<int>(view.parameterLook)])->setChecked(true);
  table->at(joins[static_cast<int>(state.join)])->setChecked(true);
}

} // namespace runsieve::app
