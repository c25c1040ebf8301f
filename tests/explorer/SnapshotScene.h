#pragma once

#include "KeptText.h"
#include "Snapshot.h"
#include "WindowScene.h"

#include "app/explorer/window/Appearance.h"

#include <QFontDatabase>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <cmath>

namespace runsieve::test {

/// Runs of three outputs of different sizes, some of them failed or short, with parameters of numbers, of
/// numbers over decades, of texts, and with a long name.
inline std::shared_ptr<Scan const> mixedScan(std::size_t runs = 120)
{
  const std::shared_ptr<Scan const> lines = lineScan(runs, 4);
  auto scan = std::make_shared<Scan>();
  scan->time = lines->time;
  scan->times = lines->times;
  scan->runs = lines->runs;
  scan->parameters = lines->parameters;
  const std::size_t times = scan->times.size();
  for (std::size_t output = 0; output < lines->outputs.size(); ++output) {
    double* values = scan->addOutput(lines->outputs[output].label);
    for (std::size_t run = 0; run < runs; ++run)
      values = std::copy_n(lines->valuesOf(output, run), times, values);
  }
  double* decades = scan->addOutput({"Phosphorylated kinase", "molecules", "", ""});
  for (std::size_t run = 0; run < runs; ++run)
    for (std::size_t t = 0; t < times; ++t)
      *decades++ = std::pow(10.0, 4.0 * scattered(2, run) * static_cast<double>(t) / 10.0);

  ScanParameter overDecades;
  overDecades.label = {"Kd", "nM", "", ""};
  ScanParameter longName;
  longName.label.name = "rate constant of the degradation of messenger RNA in the cytoplasm";
  ScanParameter strain;
  strain.label.name = "strain";
  strain.texts = {"WT", "mutant", "double mutant"};
  for (std::size_t run = 0; run < runs; ++run) {
    overDecades.values.push_back(std::pow(10.0, 4.0 * scattered(4, run) - 2.0));
    longName.values.push_back(1e-3 * scattered(5, run));
    strain.values.push_back(std::floor(3.0 * scattered(0, run)));
  }
  for (ScanParameter const& each : {overDecades, longName, strain}) scan->parameters.push_back(each);

  constexpr std::size_t failed = 7;
  constexpr std::size_t ended = 11;
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (ScanOutput& output : scan->outputs) {
    double* values = output.values.get();
    values[failed * times + 3] = none;
    std::fill(values + ended * times + 6, values + (ended + 1) * times, none);
  }
  scan->runs[failed].status = RunStatus::Failed;
  scan->runs[ended].status = RunStatus::Short;
  scan->runs[ended].end = 6;
  scan->check();
  return scan;
}

/// The explorer's window in letters and colours that are the same everywhere.
struct SnapshotScene : WindowScene
{
  SnapshotScene()
      : style(QApplication::style()->objectName()), palette(QApplication::palette()),
        font(QApplication::font())
  {
    QFont letters("DejaVu Sans");
    letters.setPixelSize(12);
    letters.setHintingPreference(QFont::PreferNoHinting);
    QApplication::setFont(letters);
    app::chooseAppearance(app::Appearance::Light);
  }
  ~SnapshotScene() override
  {
    for (QWidget* pane : alone) pane->setParent(window.get());
    window.reset();
    QApplication::setStyle(QStyleFactory::create(style));
    QApplication::setPalette(palette);
    QApplication::setFont(font);
  }

  void openScan(std::shared_ptr<Scan const> scan = mixedScan())
  {
    document().open(std::move(scan), {});
    ASSERT_TRUE(settle());
  }
  /// Gates of several kinds, of which the first is selected; sets, and pinned runs.
  void fill()
  {
    openScan();
    Gate high = gateOnA(0.3, 1.0);
    Gate rising;
    rising.kind = GateKind::Ever;
    rising.column = "B";
    rising.span = GateSpan{6.0, 9.0};
    rising.range = {0.05, 2.0};
    Gate range;
    range.column = "Kd";
    range.range = {0.02, 200.0};
    Gate strains;
    strains.kind = GateKind::Is;
    strains.column = "strain";
    strains.texts = {"mutant", "double mutant"};
    Gate never;
    never.kind = GateKind::Never;
    never.column = "Phosphorylated kinase";
    never.range.low = 2000.0;
    document().change("Add gates", [&](app::State& state) {
      state.gates = {{"High", high, true},
                     {"Rising", rising, true},
                     {"Gate 3", range, true},
                     {"Strains", strains, true},
                     {"Not far", never, false}};
      state.view.outputs = {0, 1};
      RunSet even(document().scan().runs.size());
      RunSet thirds(even.runs());
      for (std::size_t run = 20; run < 50; ++run) {
        even.set(run, run % 2 == 0);
        thirds.set(run, run % 3 == 0);
      }
      state.sets = {{"even ones", even, 0, true, "typed"},
                    {"every third", thirds, 1, false, "cluster 1 of 4"}};
    });
    document().selectGate(0);
    document().pin({30, 33});
    ASSERT_TRUE(settle());
  }
  void show(std::function<void(app::ViewState&)> const& edit)
  {
    document().change("View", [&](app::State& state) { edit(state.view); });
    ASSERT_TRUE(settle());
  }
  /// Shows a pane of the window in one of its own, so that its size hangs on nothing else.
  void showAlone(QWidget& pane, QSize const& size)
  {
    alone.push_back(&pane);
    pane.setParent(nullptr);
    pane.resize(size);
    pane.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
    ASSERT_TRUE(settle());
  }
  /// What a widget shows when it has come to rest.
  [[nodiscard]] static QStringList shown(QWidget& widget) { return atRest(widget, Snapshot::of); }
  /// The same without what it paints.
  [[nodiscard]] static QStringList layoutOf(QWidget& widget) { return atRest(widget, Snapshot::layoutOf); }

private:
  [[nodiscard]] static QStringList atRest(QWidget& widget, QStringList (*look)(QWidget&))
  {
    constexpr int pause = 30; // ms
    constexpr int mostLooks = 100;
    QStringList former = look(widget);
    for (int i = 0; i < mostLooks; ++i) {
      QTest::qWait(pause);
      QStringList now = look(widget);
      if (now == former) break;
      former = std::move(now);
    }
    return former;
  }

  std::vector<QWidget*> alone;
  QString style;
  QPalette palette;
  QFont font;
};

} // namespace runsieve::test
