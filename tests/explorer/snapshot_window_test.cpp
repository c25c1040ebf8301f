// What the window as a whole, its menus and its dialogs look like and tell.

#include "Dialogs.h"
#include "SnapshotScene.h"

#include "app/explorer/gates/GateForm.h"
#include "app/explorer/gates/GatesPane.h"
#include "app/explorer/parameters/ParameterArea.h"
#include "app/explorer/session/ChangedFileBar.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/sets/ClusterForm.h"
#include "app/explorer/sets/SetsPane.h"
#include "app/explorer/sets/TypeRunsForm.h"
#include "app/explorer/tables/ParameterTable.h"
#include "app/explorer/tables/RunTable.h"
#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/CommandSearch.h"
#include "app/explorer/window/HelpDialogs.h"
#include "app/explorer/window/Icons.h"
#include "app/explorer/window/LimitsDialog.h"
#include "app/explorer/window/MethodDialog.h"
#include "app/explorer/window/StartPage.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenuBar>
#include <QTableView>
#include <QToolButton>

namespace runsieve::test {
namespace {

struct WindowSnapshots : SnapshotScene
{
  /// Of the next dialog that a function opens.
  template <class Open> [[nodiscard]] QStringList dialogOf(Open const& open)
  {
    QStringList lines;
    NextDialogOf<QDialog> next([&](QDialog& dialog) {
      lines = shown(dialog);
      dialog.reject();
    });
    open();
    EXPECT_TRUE(next.seen());
    return lines;
  }
  [[nodiscard]] QStringList layout() { return layoutOf(*window); }
  template <class Dialog> [[nodiscard]] static QStringList ofShown(Dialog& dialog)
  {
    dialog.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    return shown(dialog);
  }
};

TEST_F(WindowSnapshots, OfTheStart)
{
  window->findChild<app::StartPage*>()->setRecent({"/data/first.csv", "/data/second.sieve"});
  EXPECT_TRUE(isAsKept("window_start", layout(), nearInWindow));
}

TEST_F(WindowSnapshots, OfMenusWithoutAScan)
{
  EXPECT_TRUE(isAsKept("menus_empty", Snapshot::of(window->menuBar()->actions())));
}

TEST_F(WindowSnapshots, OfMenusWithAGateSelected)
{
  fill();
  EXPECT_TRUE(isAsKept("menus", Snapshot::of(window->menuBar()->actions())));
}

TEST_F(WindowSnapshots, OfMenusOnThings)
{
  fill();
  QStringList lines;
  auto const look = [&](QString const& name, std::function<void()> const& open) {
    withMenu(open, [&](QMenu& menu) {
      menu.ensurePolished();
      lines << name << Snapshot::of(menu.actions());
    });
  };
  auto const lookAtTable = [&](QString const& name, QWidget* pane) {
    ASSERT_NE(pane, nullptr);
    auto* rows = pane->findChild<QAbstractItemView*>();
    look(name, [=] { Q_EMIT rows->customContextMenuRequested({5, 5}); });
    rows->selectionModel()->select(rows->model()->index(1, 0),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    look(name + ", second row", [=] { Q_EMIT rows->customContextMenuRequested({5, 5}); });
    if (auto* table = qobject_cast<QTableView*>(rows))
      if (QHeaderView* header = table->horizontalHeader();
          header->contextMenuPolicy() == Qt::CustomContextMenu)
        look(name + ", head", [=] { Q_EMIT header->customContextMenuRequested({header->width() / 2, 5}); });
  };
  lookAtTable("gates", &window->gates());
  lookAtTable("sets", &window->sets());
  lookAtTable("runs", window->findChild<app::RunTable*>());
  lookAtTable("parameters", window->findChild<app::ParameterTable*>());
  look("a gate", [this] { Q_EMIT window->runs().gateMenuWanted({9, 9}); });
  auto* area = window->findChild<app::ParameterArea*>();
  ASSERT_NE(area, nullptr);
  area->setFocus();
  look("a parameter", [=] {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {});
    QApplication::sendEvent(area->viewport(), &event);
  });
  for (auto* button : window->findChildren<QToolButton*>())
    if (QMenu* menu = button->menu(); menu && !button->text().isEmpty()) {
      Q_EMIT menu->aboutToShow();
      lines << "button " + button->text() << Snapshot::of(menu->actions());
    }
  EXPECT_TRUE(isAsKept("menus_of_things", lines));
}

TEST_F(WindowSnapshots, OfAllPanes)
{
  fill();
  EXPECT_TRUE(isAsKept("window", layout(), nearInWindow));
}

TEST_F(WindowSnapshots, OfWhatAllControlsAreCalledAlsoThoseThatAreHidden)
{
  fill();
  QStringList lines;
  for (QWidget const* widget : window->findChildren<QWidget*>()) {
    QString line;
    if (!widget->accessibleName().isEmpty()) line += " called \"" + widget->accessibleName() + '"';
    if (!widget->toolTip().isEmpty())
      line += " tip \"" + widget->toolTip().replace(QRegularExpression("\\d+"), "#") + '"'; // runs at a point
    if (!widget->statusTip().isEmpty()) line += " status \"" + widget->statusTip() + '"';
    const QString kind = widget->metaObject()->className();
    if (kind.startsWith("QDock") || kind == "QWidget") continue;  // of the style
    const bool isTable = qobject_cast<QTableView const*>(widget); // as high as its rows
    if (!isTable && widget->minimumSize() != QSize(0, 0))
      line += QString(" at least %1 x %2").arg(widget->minimumWidth()).arg(widget->minimumHeight());
    if (widget->maximumWidth() < QWIDGETSIZE_MAX)
      line += QString(" at most %1 wide").arg(widget->maximumWidth());
    if (!widget->isVisible() && kind.startsWith("runsieve")) line += Snapshot::manners(*widget);
    if (qobject_cast<QLabel const*>(widget)) line += Snapshot::manners(*widget);
    if (!line.isEmpty()) lines << kind + line.replace('\n', " / ");
  }
  EXPECT_TRUE(isAsKept("controls", lines));
}

TEST_F(WindowSnapshots, OfPanesWithoutGatesAndSets)
{
  openScan();
  showAlone(window->gates(), {520, 240});
  EXPECT_TRUE(isAsKept("gates_empty", shown(window->gates())));
  showAlone(window->sets(), {520, 240});
  EXPECT_TRUE(isAsKept("sets_empty", shown(window->sets())));
}

TEST_F(WindowSnapshots, OfASmallWindow)
{
  fill();
  window->resize(800, 600);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(isAsKept("window_small", layout(), nearInWindow));
}

TEST_F(WindowSnapshots, OfIcons)
{
  QStringList lines;
  auto const look = [&](QString const& name, QIcon const& icon) {
    if (icon.isNull()) return;
    const Painting strokes =
        painting({64, 64}, [&](QPainter& painter) { icon.paint(&painter, QRect(0, 0, 64, 64)); });
    lines << name << Snapshot::of(strokes);
  };
  for (app::ActionEntry const& entry : app::actionTable()) look(entry.id, app::iconOf(entry.id));
  look("program", app::programIcon());
  EXPECT_TRUE(isAsKept("icons", lines));
}

TEST_F(WindowSnapshots, OfTheFormsOfGates)
{
  fill();
  for (auto const& [index, name] :
       {std::pair{0u, "form_gate_span"}, {2u, "form_gate_parameter"}, {3u, "form_gate_texts"}}) {
    app::GateForm form(document(), index, window.get());
    form.show();
    ASSERT_TRUE(waitFor([&] { return form.isSettled(); }));
    EXPECT_TRUE(isAsKept(name, shown(form)));
    form.reject();
  }
  app::GateForm form(document(), {}, window.get());
  form.show();
  ASSERT_TRUE(waitFor([&] { return form.isSettled(); }));
  EXPECT_TRUE(isAsKept("form_gate_new", shown(form)));
  form.reject();
}

TEST_F(WindowSnapshots, OfFormsThatAsk)
{
  fill();
  app::ClusterForm clusters(document(), window.get());
  EXPECT_TRUE(isAsKept("form_clusters", ofShown(clusters)));
  app::TypeRunsForm runs(document(), window.get());
  EXPECT_TRUE(isAsKept("form_runs", ofShown(runs)));
  EXPECT_TRUE(isAsKept("form_method", dialogOf([this] { app::editMethod(document(), window.get()); })));
  EXPECT_TRUE(isAsKept(
      "form_limits", dialogOf([this] { app::editLimits(document(), window->runs().zoom(), window.get()); })));
}

TEST_F(WindowSnapshots, OfDialogsThatTell)
{
  app::CommandSearch search(window->findChildren<QAction*>(QRegularExpression("^(zoom|set)\\.")),
                            window.get());
  EXPECT_TRUE(isAsKept("command_search", ofShown(search)));
  app::ErrorDialog error({"The scan could not be opened", "line 3: 4 values, 5 expected", "Look at line 3."},
                         window.get());
  EXPECT_TRUE(isAsKept("error", ofShown(error)));
  app::showKeys(window.get());
  QDialog* keys = nullptr;
  for (QDialog* dialog : window->findChildren<QDialog*>())
    if (dialog->windowTitle() == "Keys and mouse") keys = dialog;
  ASSERT_NE(keys, nullptr);
  EXPECT_TRUE(isAsKept("keys", shown(*keys)));
  keys->close();
}

TEST_F(WindowSnapshots, OfTheBarOverAChangedFile)
{
  app::ChangedFileBar bar(window.get());
  bar.resize(700, 40);
  bar.tell("/data/a scan with a rather long name.csv");
  EXPECT_TRUE(isAsKept("changed_file", shown(bar)));
  bar.tellGone("/data/a scan with a rather long name.csv");
  EXPECT_TRUE(isAsKept("changed_file_gone", shown(bar)));
}

} // namespace
} // namespace runsieve::test
