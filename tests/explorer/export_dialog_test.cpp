#include "DocumentScene.h"

#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/figure/FigureForm.h"
#include "app/explorer/figure/FigurePreview.h"
#include "app/explorer/figure/FigureSettings.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>

namespace runsieve::test {
namespace {

struct ExportScene : DocumentScene
{
  QTemporaryDir folder;
  std::unique_ptr<app::ExportDialog> dialog;

  ExportScene()
  {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    addGate(gateOnA(0.5, 1.0));
    EXPECT_TRUE(settle());
    open();
  }

  void open()
  {
    dialog = std::make_unique<app::ExportDialog>(app::figureContentOf(document, {0.0, 10.0}, {}),
                                                 document.state().view);
    dialog->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    EXPECT_TRUE(previewed());
  }

  [[nodiscard]] bool previewed() const
  {
    return waitFor([&] { return dialog->preview().isSettled() && !dialog->preview().picture().isNull(); });
  }

  template <class Widget> [[nodiscard]] Widget* named(char const* name) const
  {
    for (auto* widget : dialog->findChildren<Widget*>())
      if (widget->accessibleName() == name) return widget;
    ADD_FAILURE() << "there is no " << name;
    return nullptr;
  }

  [[nodiscard]] QPushButton* button(char const* text) const
  {
    for (auto* each : dialog->findChildren<QPushButton*>())
      if (each->text() == text) return each;
    ADD_FAILURE() << "there is no " << text;
    return nullptr;
  }

  void save(QString const& path)
  {
    bool done = false;
    QObject::connect(dialog.get(), &app::ExportDialog::saved, dialog.get(), [&] { done = true; });
    dialog->save(path);
    EXPECT_TRUE(waitFor([&] { return done; })) << dialog->outcome().toStdString();
  }
};

TEST_F(ExportScene, ThePreviewFollowsTheOptions)
{
  const QImage before = dialog->preview().picture();
  named<QLineEdit>("Title")->setText("A title");
  ASSERT_TRUE(previewed());
  EXPECT_NE(dialog->preview().picture(), before);
}

TEST_F(ExportScene, APresetSetsSizeAndLetters)
{
  auto* preset = named<QComboBox>("Size for");
  QTest::keyClick(preset, Qt::Key_Down);
  EXPECT_EQ(dialog->form().options().width, app::figurePresets()[preset->currentIndex() - 1].width);
  EXPECT_EQ(dialog->form().options().fontSize, app::figurePresets()[preset->currentIndex() - 1].fontSize);
  named<QDoubleSpinBox>("Width")->setValue(123.0);
  EXPECT_EQ(preset->currentIndex(), 0);
}

TEST_F(ExportScene, AFigureIsWrittenAndTold)
{
  save(folder.filePath("figure.svg"));
  EXPECT_TRUE(QFile::exists(folder.filePath("figure.svg")));
  EXPECT_TRUE(dialog->outcome().contains("figure.svg is written"));
  EXPECT_TRUE(button("Open folder")->isVisible());
}

TEST_F(ExportScene, WithoutAnEndingItBecomesAPdf)
{
  save(folder.filePath("figure"));
  QFile file(folder.filePath("figure.pdf"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.read(5) == "%PDF-");
}

TEST_F(ExportScene, TheDataBehindItAreWrittenBesideIt)
{
  for (auto* box : dialog->findChildren<QCheckBox*>())
    if (box->text().contains("CSV")) box->setChecked(true);
  save(folder.filePath("f.pdf"));
  for (char const* name : {"f_runs.csv", "f_curves.csv", "f_parameters.csv"})
    EXPECT_TRUE(QFile::exists(folder.filePath(name))) << name;
}

TEST_F(ExportScene, AFileThatCannotBeWrittenIsToldAndTheDialogGoesOn)
{
  dialog->save("/no such folder/figure.pdf");
  ASSERT_TRUE(waitFor([&] { return dialog->outcome().contains("no such folder"); }));
  EXPECT_FALSE(button("Open folder")->isVisible());
  EXPECT_TRUE(button("Save...")->isEnabled());
}

TEST_F(ExportScene, TheFigureGoesToTheClipboardInPixels)
{
  dialog->copy();
  ASSERT_TRUE(waitFor([&] { return dialog->outcome().contains("on the clipboard"); }));
  EXPECT_EQ(QApplication::clipboard()->image().size(), app::figurePixels(dialog->form().options()));
}

TEST_F(ExportScene, TheOptionsOfTheLastFigureAreKept)
{
  named<QDoubleSpinBox>("Width")->setValue(99.0);
  named<QComboBox>("Colours")->setCurrentIndex(1);
  named<QLineEdit>("Title")->setText("Of this scan only");
  save(folder.filePath("figure.pdf"));
  open();
  EXPECT_EQ(dialog->form().options().width, 99.0);
  EXPECT_EQ(dialog->form().options().palette, app::FigurePalette::ColourBlind);
  EXPECT_TRUE(dialog->form().options().title.isEmpty());
}

TEST_F(ExportScene, TheLastOutputCannotBeTakenOut)
{
  document.change("Add chart", [](app::State& state) { state.view.outputs = {0, 1}; });
  open();
  std::vector<QCheckBox*> boxes;
  for (auto* box : dialog->findChildren<QCheckBox*>())
    if (box->text() == "A" || box->text() == "B") boxes.push_back(box);
  ASSERT_EQ(boxes.size(), 2u);
  for (auto* box : boxes) box->setChecked(false);
  EXPECT_THAT(dialog->form().options().outputs, testing::ElementsAre(1));
  EXPECT_TRUE(boxes[1]->isChecked());
}

TEST_F(ExportScene, EveryControlHasAnAccessibleNameOrText)
{
  for (auto* box : dialog->form().findChildren<QWidget*>()) {
    if (!box->focusPolicy() || box->parentWidget() != &dialog->form()) continue;
    auto* check = qobject_cast<QCheckBox*>(box);
    EXPECT_FALSE((check ? check->text() : box->accessibleName()).isEmpty()) << box->metaObject()->className();
  }
}

} // namespace
} // namespace runsieve::test
