#include "support/Selections.h"
#include "support/WidgetWindow.h"

#include <vtkAnnotationLink.h>
#include <vtkChartXY.h>
#include <vtkPlotPoints.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace runsieve::test {
namespace {

struct PrintTest : WidgetWindow
{
  QTemporaryDir folder;
  QString former = QDir::currentPath();

  void SetUp() override
  {
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    showWindow();
  }

  void TearDown() override { QDir::setCurrent(former); }

  qint64 printedSize()
  {
    widget.printPlot("size.pdf");
    return QFile("size.pdf").size();
  }

  [[nodiscard]] QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
};

TEST_F(PrintTest, WritesAPdf)
{
  widget.printPlot(folder.filePath("plot.pdf"));
  QFile file(folder.filePath("plot.pdf"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.read(5) == "%PDF-");
  EXPECT_GT(file.size(), 2000);
}

TEST_F(PrintTest, PrintsPointsAndWhichAreSelected)
{
  vtkPlot* points = widget.plotContainer->chartXY->GetPlot(0);
  points->SetVisible(false);
  const qint64 empty = printedSize();
  points->SetVisible(true);
  const qint64 plain = printedSize();
  widget.plotContainer->annotationLink->SetCurrentSelection(selectionOf({0, 1}));
  EXPECT_GT(plain, empty);
  EXPECT_GT(printedSize(), plain);
}

TEST_F(PrintTest, PrintsThePointsOfAScatterPlotMatrix)
{
  widget.plotContainer->setPlotStyle(scatterPlotMatrixStyle);
  widget.updatePlot(true);
  const qint64 plain = printedSize();
  widget.plotContainer->scatterPlotMatrix->SetPlotMarkerStyle(vtkScatterPlotMatrix::SCATTERPLOT,
                                                              vtkPlotPoints::NONE);
  EXPECT_GT(plain, printedSize());
}

TEST_F(PrintTest, DropsTheEndingInAnyCaseSinceTheWriterAddsIt)
{
  for (char const* name : {"aa.pdf", "bb.PDF", "cc.PdF", "dd"}) widget.printPlot(name);
  EXPECT_EQ(files(), QStringList({"aa.pdf", "bb.pdf", "cc.pdf", "dd.pdf"}));
}

TEST_F(PrintTest, ANameOfOneLetterKeepsItsEnding)
{
  widget.printPlot("a.pdf");
  EXPECT_EQ(files(), QStringList({"a.pdf.pdf"}));
}

TEST_F(PrintTest, TheLastEndingInsideANameIsDroppedToo)
{
  widget.printPlot("my.pdf.bak");
  widget.printPlot("two.pdf.pdf");
  EXPECT_EQ(files(), QStringList({"my.bak.pdf", "two.pdf.pdf"}));
}

TEST_F(PrintTest, AFileThatCannotBeWrittenIsNotReported)
{
  OutputWindowLog exporters;
  testing::internal::CaptureStdout();
  widget.printPlot(folder.filePath("no/such/folder/plot.pdf"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_TRUE(files().isEmpty());
}

} // namespace
} // namespace runsieve::test
