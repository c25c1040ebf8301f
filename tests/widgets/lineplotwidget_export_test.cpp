#include "support/TempFile.h"
#include "support/LinePanel.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include <functional>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace runsieve::test {
namespace {

/// A user who answers the file dialog as soon as it is there.
class DialogUser
{
public:
  explicit DialogUser(std::function<void(QFileDialog&)> answer) : answer(std::move(answer))
  {
    QObject::connect(&timer, &QTimer::timeout, [this] { look(); });
    timer.start(20);
  }

  [[nodiscard]] int dialogs() const { return answered; }

private:
  void look()
  {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<QFileDialog*>(window);
      if (!dialog || !dialog->isVisible()) continue;
      if (answered++ == 0) answer(*dialog);
      if (!dialog->isVisible()) return timer.stop();
    }
    if (++looks > 500) giveUp();
  }

  void giveUp()
  {
    timer.stop();
    if (QWidget* window = QApplication::activeModalWidget()) window->close();
  }

  std::function<void(QFileDialog&)> answer;
  QTimer timer;
  int answered = 0;
  int looks = 0;
};

/// Types a path and leaves the dialog with its button for saving.
void saveAs(QFileDialog& dialog, std::string const& path)
{
  dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(path));
  static_cast<QDialog&>(dialog).accept();
}

struct LinePlotExportTest : LinePanel
{
  TempFolder folder;

  void exportAs(std::string const& name)
  {
    DialogUser const user([this, &name](QFileDialog& dialog) { saveAs(dialog, folder.file(name)); });
    press(panel.ui.exportButton);
    release(panel.ui.exportButton);
    EXPECT_EQ(user.dialogs(), 1);
  }

  /// The first line of an exported file names all columns.
  static void expectAllColumns(std::string const& text)
  {
    std::string const header = text.substr(0, text.find('\n'));
    EXPECT_THAT(header, AllOf(StartsWith("\"Time [s]\""), HasSubstr("\"Molecule: A\""),
                              HasSubstr("\"Molecule: B\""), HasSubstr("\"Complex: C\"")));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
  }
};

TEST_F(LinePlotExportTest, APressOnTheButtonWritesAllColumns)
{
  show();
  panel.setData(&data);
  exportAs("plot.csv");
  EXPECT_EQ(folder.fileCount(), 1u);
  expectAllColumns(TempFolder::contentOf(folder.file("plot.csv")));
  EXPECT_EQ(plot().plotData->GetNumberOfColumns(), 4);
}

TEST_F(LinePlotExportTest, TheNameGetsNoExtension)
{
  show();
  panel.setData(&data);
  exportAs("plot");
  EXPECT_EQ(folder.fileCount(), 1u);
  expectAllColumns(TempFolder::contentOf(folder.file("plot")));
}

TEST_F(LinePlotExportTest, RemovedDataCanStillBeWritten)
{
  show();
  panel.setData(&data);
  panel.removeData();
  exportAs("old.csv");
  expectAllColumns(TempFolder::contentOf(folder.file("old.csv")));
}

TEST_F(LinePlotExportTest, TheExportIsReadableAgain)
{
  show();
  panel.setData(&data);
  exportAs("plot.csv");
  PlotContainer loaded(nullptr);
  loaded.loadData(folder.file("plot.csv"));
  EXPECT_THAT(numbers(loaded.plotData, "Molecule: A"), ElementsAre(5, 60, 700));
}

TEST_F(LinePlotExportTest, TheDialogIsOneOfQtForSavingTextFiles)
{
  show();
  panel.setData(&data);
  DialogUser const user([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Save Plot data as");
    EXPECT_EQ(dialog.nameFilters(), QStringList("CSV(*.csv)"));
    EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.parentWidget(), nullptr);
    dialog.reject();
  });
  panel.exportPlot();
  EXPECT_EQ(user.dialogs(), 1);
}

TEST_F(LinePlotExportTest, ACancelledDialogWritesNothing)
{
  show();
  panel.setData(&data);
  DialogUser const user([this](QFileDialog& dialog) {
    dialog.selectFile(QString::fromStdString(folder.file("plot.csv")));
    dialog.reject();
  });
  press(panel.ui.exportButton);
  release(panel.ui.exportButton);
  EXPECT_EQ(user.dialogs(), 1);
  EXPECT_EQ(folder.fileCount(), 0u);
}

TEST_F(LinePlotExportTest, TheReleaseOfTheButtonAsksNothing)
{
  show();
  panel.setData(&data);
  release(panel.ui.exportButton);
  QTest::qWait(50);
  for (QWidget* window : QApplication::topLevelWidgets())
    EXPECT_FALSE(qobject_cast<QFileDialog*>(window) && window->isVisible());
}

} // namespace
} // namespace runsieve::test
