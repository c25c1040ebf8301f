#include "CompositeScene.h"

#include "app/view/ScanPlot.h"
#include "StoredPlots.h"
#include "support/TempFile.h"

#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>

#include <vtkAxis.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

#include <fstream>
#include <utility>

namespace runsieve::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const char* const switches[] = {"Densities",          "Common density scale", "Quartile bands",
                                "Log parameter axes", "Points, not lines",    "Plain lines"};

struct CompositeStore : CompositeScene
{
  void save(const char* name)
  {
    QString error;
    ASSERT_TRUE(window.savePlot(file(name), error)) << error.toStdString();
  }

  static void open(app::CompositeWindow& other, QString const& path)
  {
    show(other);
    QString error;
    ASSERT_TRUE(other.open(path, error)) << error.toStdString();
    settle(other);
  }

  static std::vector<bool> switchesOf(app::CompositeWindow& shown)
  {
    std::vector<bool> states;
    for (const char* text : switches) states.push_back(child<QCheckBox>(shown, text)->isChecked());
    return states;
  }

  static std::vector<double> thresholdsOf(app::CompositeWindow& shown)
  {
    std::vector<double> values;
    for (auto const* box : shown.findChildren<QDoubleSpinBox*>()) values.push_back(box->value());
    return values;
  }

  static std::vector<double> rangesOf(app::CompositeWindow& shown)
  {
    vtkChart* chart = shown.plot()->chartXY;
    vtkAxis* bottom = chart->GetAxis(vtkAxis::BOTTOM);
    vtkAxis* left = chart->GetAxis(vtkAxis::LEFT);
    return {bottom->GetMinimum(), bottom->GetMaximum(), left->GetMinimum(), left->GetMaximum()};
  }

  /// Shifts the chart of the runs with the left button.
  void pan()
  {
    ChartMouse(*window.plotWidget(), plot().chartXY).drag({8.0, 3.0}, {14.0, 4.0}, Qt::LeftButton);
    settle();
  }

  std::string refusal(QString const& path)
  {
    QString error;
    EXPECT_FALSE(window.open(path, error));
    settle();
    return error.toStdString();
  }
};

TEST_F(CompositeStore, APlainViewComesBack)
{
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_EQ(other.statusText(), "60 runs, 33 times");
  EXPECT_EQ(other.windowTitle(), "plot.rsd - Runsieve");
  EXPECT_EQ(switchesOf(other), std::vector<bool>(6, false));
  EXPECT_EQ(rangesOf(other), rangesOf(window));
}

TEST_F(CompositeStore, ASavedPdfTellsThatItsRunsAreAnImage)
{
  QString error;
  ASSERT_TRUE(window.savePicture(file("view.png"), error)) << error.toStdString();
  EXPECT_EQ(window.statusBar()->currentMessage(), "");
  ASSERT_TRUE(window.savePicture(file("view.pdf"), error)) << error.toStdString();
  EXPECT_THAT(window.statusBar()->currentMessage().toStdString(), HasSubstr("144 pixels per inch"));
}

TEST_F(CompositeStore, TheSelectionComesBack)
{
  drag(16, 3.0, 5.0);
  ASSERT_THAT(status(), HasSubstr("pass through all places"));
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_EQ(other.statusText(), window.statusText());
  ASSERT_EQ(other.plot()->ksStatistics.size(), plot().ksStatistics.size());
  for (std::size_t i = 0; i < plot().ksStatistics.size(); ++i)
    EXPECT_EQ(other.plot()->ksStatistics[i].p, plot().ksStatistics[i].p);
}

TEST_F(CompositeStore, GatesStayAsLongAsTheSelectionIsTheirs)
{
  drag(16, 3.0, 5.0);
  save("marked.rsd");
  app::StoredPlot plot = app::readPlot(file("marked.rsd").toStdString());
  ASSERT_THAT(plot.gates, IsEmpty());
  plot.gates = {parseGate("status complete"), parseGate("runs 1")};
  plot.join = GateJoin::Any;
  app::writePlot(plot, file("gated.rsd").toStdString());
  app::CompositeWindow other;
  open(other, file("gated.rsd"));
  QString error;
  ASSERT_TRUE(other.savePlot(file("again.rsd"), error)) << error.toStdString();
  const app::StoredPlot again = app::readPlot(file("again.rsd").toStdString());
  EXPECT_EQ(again.selectedRows, plot.selectedRows);
  ASSERT_EQ(again.gates.size(), 2u);
  EXPECT_EQ(formatGate(again.gates[1]), "runs 1");
  EXPECT_EQ(again.join, GateJoin::Any);

  app::clearSelection(*other.plot());
  settle(other);
  ASSERT_TRUE(other.savePlot(file("other.rsd"), error)) << error.toStdString();
  EXPECT_THAT(app::readPlot(file("other.rsd").toStdString()).gates, IsEmpty());
}

TEST_F(CompositeStore, OutputsOfOneNameAreToldApartByTheirTypes)
{
  std::ofstream(file("types.csv").toStdString())
      << "\"Molecule: A\",\"Complex: A\",\"Molecule: B\",\": Time [s]\",\": Run Index\",\"Parameter: k\"\n"
         "1,2,3,0,0,1\n2,3,4,1,0,1\n1,2,4,0,1,2\n2,5,3,1,1,2\n";
  app::CompositeWindow other;
  open(other, file("types.csv"));
  auto const* outputs = other.findChild<QComboBox*>();
  std::vector<std::string> names;
  for (int i = 0; i < outputs->count(); ++i) names.push_back(outputs->itemText(i).toStdString());
  EXPECT_THAT(names, ElementsAre("Molecule: A", "Complex: A", "B"));
}

TEST_F(CompositeStore, WarningsShowNamesOfFilesAsTheyAre)
{
  QString shown;
  QTimer::singleShot(0, [&shown] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    shown = box->text();
    box->accept();
  });
  window.openInteractively(file("<b>bold</b>.csv"));
  EXPECT_THAT(shown.toStdString(), HasSubstr("<b>bold</b>.csv"));
}

TEST_F(CompositeStore, EachSwitchComesBackAndReachesTheView)
{
  for (int on = 0; on < 5; ++on) {
    for (int i = 0; i < 5; ++i) child<QCheckBox>(window, switches[i])->setChecked(i == on);
    settle();
    save("plot.rsd");
    app::CompositeWindow other;
    open(other, file("plot.rsd"));
    EXPECT_EQ(switchesOf(other), switchesOf(window)) << switches[on];
    PlotMetaData const& settings = *other.plot()->metaData;
    EXPECT_EQ(settings.getUseDensity(), on == 0);
    EXPECT_EQ(settings.getCommonDensityScale(), on == 1);
    EXPECT_EQ(settings.getShowQuantiles(), on == 2);
    EXPECT_EQ(settings.getLogParameterAxes(), on == 3);
    EXPECT_EQ(settings.getPlotLine(), on != 4);
    EXPECT_EQ(other.plot()->chartXY->GetNumberOfPlots(), plot().chartXY->GetNumberOfPlots());
  }
}

TEST_F(CompositeStore, ThresholdsComeBackAndReachTheView)
{
  const auto boxes = window.findChildren<QDoubleSpinBox*>();
  ASSERT_EQ(boxes.size(), 2);
  boxes[0]->setValue(0.0123);
  boxes[1]->setValue(0.4);
  settle();
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_EQ(thresholdsOf(other), thresholdsOf(window));
  EXPECT_EQ(other.plot()->metaData->getPThreshold(), plot().metaData->getPThreshold());
  EXPECT_EQ(other.plot()->metaData->getKsThreshold(), plot().metaData->getKsThreshold());
}

TEST_F(CompositeStore, AThresholdFinerThanItsBoxIsKept)
{
  app::StoredPlot plot;
  plot.scan = shaped.scan;
  plot.view.pThreshold = 0.00001;
  writePlot(plot, file("fine.rsd").toStdString());
  QString error;
  ASSERT_TRUE(window.open(file("fine.rsd"), error));
  settle();
  EXPECT_EQ(this->plot().metaData->getPThreshold(), 0.00001);
  save("plot.rsd");
  EXPECT_EQ(app::readPlot(file("plot.rsd").toStdString()).view.pThreshold, 0.00001);
}

TEST_F(CompositeStore, TheOutputComesBack)
{
  window.findChild<QComboBox*>()->setCurrentIndex(1);
  settle();
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_EQ(other.findChild<QComboBox*>()->currentText(), "B");
  EXPECT_EQ(other.plot()->chartXY->GetAxis(vtkAxis::LEFT)->GetTitle(), "B");
}

TEST_F(CompositeStore, TheZoomComesBack)
{
  const std::vector<double> before = rangesOf(window);
  pan();
  ASSERT_NE(rangesOf(window), before);
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_EQ(rangesOf(other), rangesOf(window));
}

TEST_F(CompositeStore, AllOfItComesBackTogether)
{
  window.findChild<QComboBox*>()->setCurrentIndex(1);
  for (const char* text : switches) child<QCheckBox>(window, text)->click();
  window.findChildren<QDoubleSpinBox*>()[0]->setValue(0.3);
  settle();
  drag(16, 3.0, 5.0);
  pan();
  save("first.rsd");
  app::CompositeWindow other;
  open(other, file("first.rsd"));
  EXPECT_EQ(other.statusText(), window.statusText());
  EXPECT_EQ(switchesOf(other), std::vector<bool>(6, true));
  EXPECT_EQ(thresholdsOf(other), thresholdsOf(window));
  EXPECT_EQ(rangesOf(other), rangesOf(window));
  QString error;
  ASSERT_TRUE(other.savePlot(file("second.rsd"), error));
  EXPECT_EQ(TempFolder::contentOf(file("second.rsd").toStdString()),
            TempFolder::contentOf(file("first.rsd").toStdString()));
}

TEST_F(CompositeStore, TheFileHoldsTheScanBitForBit)
{
  save("plot.rsd");
  EXPECT_TRUE(sameBits(*app::readPlot(file("plot.rsd").toStdString()).scan, *shaped.scan));
}

TEST_F(CompositeStore, APlotCanBeOpenedOverAScanAndAScanOverAPlot)
{
  drag(16, 3.0, 5.0);
  child<QCheckBox>(window, "Densities")->click();
  settle();
  save("plot.rsd");
  const std::string selected = status();
  QString error;
  ASSERT_TRUE(window.open(file("scan.csv"), error));
  settle();
  EXPECT_EQ(status(), "60 runs, 33 times");
  EXPECT_TRUE(child<QCheckBox>(window, "Densities")->isChecked()) << "a scan takes the present view";
  ASSERT_TRUE(window.open(file("plot.rsd"), error));
  settle();
  EXPECT_EQ(status(), selected);
}

TEST_F(CompositeStore, ADragAddsToASelectionThatCameBack)
{
  drag(16, 3.0, 5.0);
  save("plot.rsd");
  QString error;
  ASSERT_TRUE(window.open(file("plot.rsd"), error));
  settle();
  const std::size_t passing = app::survivingRuns(plot());
  ChartMouse(*window.plotWidget(), plot().chartXY)
      .drag({3.8, 1.0}, {4.2, 3.5}, Qt::RightButton, Qt::ControlModifier);
  settle();
  EXPECT_GT(app::survivingRuns(plot()), 0u);
  EXPECT_LT(app::survivingRuns(plot()), passing);
}

TEST_F(CompositeStore, ADamagedPlotLeavesThePresentScanAndTellsWhy)
{
  drag(16, 3.0, 5.0);
  save("plot.rsd");
  const std::string before = status();
  const std::string content = TempFolder::contentOf(file("plot.rsd").toStdString());
  std::string flipped = content;
  flipped[flipped.size() / 2] ^= 1;
  const std::vector<std::pair<std::string, std::string>> damages = {
      {flipped, "damaged"},
      {content.substr(0, content.size() - 9), "cut off"},
      {content.substr(0, 40), "settings"},
      {"{\"format\":\"runsieve plot\",\"version\":2}\n", "newer version"}};
  for (auto const& [bytes, reason] : damages) {
    std::ofstream(file("bad.rsd").toStdString(), std::ios::binary) << bytes;
    const std::string told = refusal(file("bad.rsd"));
    EXPECT_THAT(told, HasSubstr("bad.rsd"));
    EXPECT_THAT(told, HasSubstr(reason));
    EXPECT_EQ(status(), before);
    EXPECT_EQ(window.windowTitle(), "scan.csv - Runsieve");
  }
  drag(10, 2.0, 4.0);
  EXPECT_THAT(status(), HasSubstr("pass")) << "the present scan still works";
}

TEST_F(CompositeStore, SayWhySavingFails)
{
  QString error;
  EXPECT_FALSE(window.savePlot("/no/such/folder/plot.rsd", error));
  EXPECT_THAT(error.toStdString(), HasSubstr("/no/such/folder/plot.rsd"));
  app::CompositeWindow empty;
  EXPECT_FALSE(empty.savePlot(file("plot.rsd"), error));
  EXPECT_THAT(error.toStdString(), HasSubstr("no scan"));
}

TEST_F(CompositeStore, ASavedClusterComesBackAsASelection)
{
  ASSERT_TRUE(window.cluster(3, app::ShapeOf::Curves));
  window.selectCluster(1);
  settle();
  save("plot.rsd");
  app::CompositeWindow other;
  open(other, file("plot.rsd"));
  EXPECT_THAT(other.statusText().toStdString(), HasSubstr("20 runs pass"));
}

} // namespace
} // namespace runsieve::test
