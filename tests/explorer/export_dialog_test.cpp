#include "Dialogs.h"
#include "DocumentScene.h"

#include "app/explorer/figure/ExportDialog.h"
#include "app/explorer/figure/FigureForm.h"
#include "app/explorer/figure/FigurePreview.h"
#include "app/explorer/figure/FigureSettings.h"

#include <runsieve/core/write/WriteScan.h>

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
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
      if (each->text().remove('&') == text) return each;
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
  NextMessage asked(QMessageBox::Cancel);
  dialog->save(folder.filePath("figure"));
  EXPECT_EQ(asked.more.count("figure.pdf"), 1) << "nobody has been asked about this name";
}

TEST_F(ExportScene, TheDataBehindItAreWrittenBesideIt)
{
  for (auto* box : dialog->findChildren<QCheckBox*>())
    if (box->text().contains("CSV")) box->setChecked(true);
  save(folder.filePath("f.pdf"));
  for (char const* name : {"f_runs.csv", "f_curves.csv", "f_parameters.csv"})
    EXPECT_TRUE(QFile::exists(folder.filePath(name))) << name;
}

TEST_F(ExportScene, DataOfAnotherFigureAreReplacedOnlyIfTheUserWantsIt)
{
  for (auto* box : dialog->findChildren<QCheckBox*>())
    if (box->text().contains("CSV")) box->setChecked(true);
  const QString path = folder.filePath("f_curves.csv");
  QFile other(path);
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.write("precious");
  other.close();
  {
    NextMessage asked(QMessageBox::Cancel);
    dialog->save(folder.filePath("f.pdf"));
    EXPECT_TRUE(asked.seen());
    EXPECT_EQ(asked.more.count("f_curves.csv"), 1);
    EXPECT_EQ(asked.more.count("f_runs.csv"), 0) << "this one does not exist";
    EXPECT_FALSE(QFile::exists(folder.filePath("f.pdf"))) << "nor is the figure written";
    EXPECT_EQ(QFileInfo(path).size(), 8);
  }
  NextMessage asked(QMessageBox::Yes);
  save(folder.filePath("f.pdf"));
  EXPECT_TRUE(asked.seen());
  EXPECT_GT(QFileInfo(path).size(), 8);
}

TEST_F(ExportScene, NeitherTheFigureNorItsDataAreWrittenOverTheOpenScan)
{
  for (char const* name : {"f_runs.csv", "scan.pdf"}) {
    writeScan(document.scan(), folder.filePath(name).toStdString());
    const qint64 size = QFileInfo(folder.filePath(name)).size();
    app::ScanSource source;
    source.path = folder.filePath(name).toStdString();
    open();
    dialog->setSource(source);
    for (auto* box : dialog->findChildren<QCheckBox*>())
      if (box->text().contains("CSV")) box->setChecked(true);
    dialog->save(folder.filePath(QString(name).contains("runs") ? "f.svg" : name));
    EXPECT_TRUE(dialog->outcome().contains("is the file that is read")) << dialog->outcome().toStdString();
    EXPECT_EQ(QFileInfo(folder.filePath(name)).size(), size);
  }
}

TEST_F(ExportScene, AFileThatCannotBeWrittenIsToldAndTheDialogGoesOn)
{
  dialog->save("/no such folder/figure.pdf");
  ASSERT_TRUE(waitFor([&] { return dialog->outcome().contains("no such folder"); }));
  EXPECT_FALSE(button("Open folder")->isVisible());
  EXPECT_TRUE(button("Save...")->isEnabled());
}

TEST_F(ExportScene, ReturnSavesAndDoesNotClose)
{
  const QString path = folder.filePath("by_keys.svg");
  auto* title = named<QLineEdit>("Title");
  title->setFocus();
  QTest::keyClicks(title, "Oscillations");
  NextFile asked(path);
  QTest::keyClick(title, Qt::Key_Return);
  EXPECT_TRUE(asked.seen());
  EXPECT_TRUE(dialog->isVisible());
  ASSERT_TRUE(waitFor([&] { return QFile::exists(path); }));
  for (QPushButton* each : dialog->findChildren<QPushButton*>())
    EXPECT_EQ(each->isDefault(), each == button("Save...")) << each->text().toStdString();
}

TEST_F(ExportScene, LabelsOfTheFormLeadToTheirFields)
{
  QSet<QChar> letters;
  int labels = 0;
  for (auto* label : dialog->findChildren<QLabel*>()) {
    const int mark = label->text().indexOf('&');
    if (mark < 0) continue;
    ++labels;
    EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
    const QChar letter = label->text().at(mark + 1).toLower();
    EXPECT_FALSE(letters.contains(letter)) << label->text().toStdString();
    letters << letter;
  }
  EXPECT_GE(labels, 9);
}

TEST_F(ExportScene, ADialogThatIsClosedWaitsForNothingAndTheFigureIsWrittenToItsEnd)
{
  named<QDoubleSpinBox>("Width")->setValue(400.0);
  named<QDoubleSpinBox>("Height")->setValue(400.0);
  ASSERT_TRUE(previewed());
  const QString path = folder.filePath("large.png");
  dialog->save(path);
  QTest::keyClick(dialog.get(), Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  dialog.reset();
  EXPECT_FALSE(QFile::exists(path)) << "it has been waited for";
  ASSERT_TRUE(waitFor([&] { return QFile::exists(path); }));
  EXPECT_EQ(QImage(path).width(), 4724);
}

TEST_F(ExportScene, AFigureThatFailsAfterItsDialogIsTold)
{
  named<QDoubleSpinBox>("Width")->setValue(200.0);
  dialog->save("/no such folder/figure.png");
  dialog.reset();
  NextMessage told(QMessageBox::Ok);
  ASSERT_TRUE(waitFor([&] { return told.seen(); }));
  EXPECT_TRUE(told.more.contains("no such folder"));
}

TEST_F(ExportScene, TheFigureGoesToTheClipboardInPixels)
{
  dialog->copy();
  ASSERT_TRUE(waitFor([&] { return dialog->outcome().contains("on the clipboard"); }));
  EXPECT_EQ(QApplication::clipboard()->image().size(), app::figurePixels(dialog->form().options()));
}

TEST_F(ExportScene, TheOptionsOfACopiedFigureAreKept)
{
  named<QDoubleSpinBox>("Width")->setValue(97.0);
  dialog->copy();
  ASSERT_TRUE(waitFor([&] { return dialog->outcome().contains("on the clipboard"); }));
  open();
  EXPECT_EQ(dialog->form().options().width, 97.0);
}

TEST_F(ExportScene, TooManyPixelsAreToldWithTheResolutionThatWorksAndNeitherWrittenNorCopied)
{
  named<QDoubleSpinBox>("Width")->setValue(1000.0);
  named<QDoubleSpinBox>("Height")->setValue(1000.0);
  named<QSpinBox>("Resolution")->setValue(1200);
  ASSERT_TRUE(previewed());
  bool told = false;
  for (auto* label : dialog->findChildren<QLabel*>()) told = told || label->text().contains("439 dpi");
  EXPECT_TRUE(told);
  dialog->copy();
  EXPECT_TRUE(dialog->outcome().contains("439 dpi")) << dialog->outcome().toStdString();
  dialog->save(folder.filePath("large.png"));
  ASSERT_TRUE(waitFor([&] { return !dialog->outcome().contains("Writing"); }));
  EXPECT_TRUE(dialog->outcome().contains("439 dpi")) << dialog->outcome().toStdString();
  EXPECT_FALSE(QFile::exists(folder.filePath("large.png")));
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

TEST_F(ExportScene, TheDialogFitsIntoAScreenOfFewLetters)
{
  const QSize screen(533, 400); // 1600 x 1200 pixels at a scale factor of 3
  dialog->resize(screen);
  EXPECT_EQ(dialog->size(), screen) << "it asks for more";
  EXPECT_TRUE(dialog->rect().contains(button("Save...")->geometry().translated(
      button("Save...")->parentWidget()->mapTo(dialog.get(), QPoint()))));
}

TEST_F(ExportScene, EveryControlHasAnAccessibleNameOrText)
{
  for (auto* box : dialog->form().findChildren<QWidget*>()) {
    if (!box->focusPolicy() || box->parentWidget() != &dialog->form()) continue;
    auto* check = qobject_cast<QCheckBox*>(box);
    EXPECT_FALSE((check ? check->text() : box->accessibleName()).isEmpty()) << box->metaObject()->className();
  }
}

/// A family of its own: some names, such as "Serif", stand for another one, which a box of fonts shows
/// instead.
QString lastFamily()
{
  QString last;
  for (QString const& family : QFontDatabase().families())
    if (QFontInfo(QFont(family)).family() == family) last = family;
  return last;
}

/// Options that all differ from those of a first figure.
app::FigureOptions otherOptions()
{
  app::FigureOptions options;
  options.width = 91.5;
  options.height = 77.5;
  options.dpi = 450;
  options.family = lastFamily();
  options.fontSize = 9.5;
  options.lineWidth = 1.25;
  options.title = "Of this scan only";
  options.gates = options.legend = options.counts = options.thresholds = false;
  options.scaleBar = options.ground = false;
  options.runsLook = app::RunsLook::Lines;
  options.parameterLook = app::ParameterLook::Scatter;
  options.strongest = 11;
  options.palette = app::FigurePalette::ColourBlind;
  return options;
}

/// What is kept from one figure to the next.
void expectSameManner(app::FigureOptions const& found, app::FigureOptions const& wanted)
{
  EXPECT_EQ(found.width, wanted.width);
  EXPECT_EQ(found.height, wanted.height);
  EXPECT_EQ(found.dpi, wanted.dpi);
  EXPECT_EQ(found.family, wanted.family);
  EXPECT_EQ(found.fontSize, wanted.fontSize);
  EXPECT_EQ(found.lineWidth, wanted.lineWidth);
  EXPECT_EQ(found.gates, wanted.gates);
  EXPECT_EQ(found.legend, wanted.legend);
  EXPECT_EQ(found.counts, wanted.counts);
  EXPECT_EQ(found.thresholds, wanted.thresholds);
  EXPECT_EQ(found.scaleBar, wanted.scaleBar);
  EXPECT_EQ(found.ground, wanted.ground);
  EXPECT_EQ(found.strongest, wanted.strongest);
  EXPECT_EQ(found.palette, wanted.palette);
}

TEST_F(ExportScene, TheFormShowsTheOptionsItIsGivenAndGivesThemBack)
{
  const app::FigureOptions wanted = otherOptions();
  const app::FigureForm form(app::figureContentOf(document, {0.0, 10.0}, {}), wanted);
  const app::FigureOptions found = form.options();
  expectSameManner(found, wanted);
  EXPECT_EQ(found.title, wanted.title);
  EXPECT_EQ(found.runsLook, wanted.runsLook);
  EXPECT_EQ(found.parameterLook, wanted.parameterLook);
  EXPECT_TRUE(found.parameters.empty());
}

TEST_F(ExportScene, ParametersThatAreListedTakeThePlaceOfANumberOfThem)
{
  app::FigureOptions wanted;
  wanted.parameters = {4, 2};
  const app::FigureForm form(app::figureContentOf(document, {0.0, 10.0}, {}), wanted);
  EXPECT_THAT(form.options().parameters, testing::ElementsAre(4, 2));
  for (auto* box : form.findChildren<QSpinBox*>())
    EXPECT_EQ(box->isEnabled(), box->accessibleName() != "How many parameters");
}

TEST_F(ExportScene, EachPresetSetsSizeLettersAndLines)
{
  app::FigureOptions odd;
  odd.width = 91.0;
  odd.height = 92.0;
  odd.fontSize = 31.0;
  odd.lineWidth = 7.5;
  app::FigureForm form(app::figureContentOf(document, {0.0, 10.0}, {}), odd);
  QComboBox* preset = nullptr;
  for (auto* box : form.findChildren<QComboBox*>())
    if (box->accessibleName() == "Size for") preset = box;
  ASSERT_NE(preset, nullptr);
  EXPECT_EQ(preset->currentIndex(), 0);
  for (app::FigurePreset const& each : app::figurePresets()) {
    QSignalSpy told(&form, &app::FigureForm::changed);
    const int index = static_cast<int>(&each - app::figurePresets().data()) + 1;
    preset->setCurrentIndex(index);
    Q_EMIT preset->activated(index);
    const app::FigureOptions now = form.options();
    EXPECT_EQ(now.width, each.width);
    EXPECT_EQ(now.height, each.height);
    EXPECT_EQ(now.fontSize, each.fontSize);
    EXPECT_EQ(now.lineWidth, each.lineWidth);
    EXPECT_EQ(told.count(), 1) << "a preview is made once";
  }
}

TEST_F(ExportScene, NumbersHaveTheirUnitsAndLimits)
{
  const app::FigureForm form(app::figureContentOf(document, {0.0, 10.0}, {}), {});
  QStringList texts;
  for (auto* box : form.findChildren<QDoubleSpinBox*>()) {
    texts << box->text();
    if (box->accessibleName() == "Width" || box->accessibleName() == "Height") {
      EXPECT_EQ(box->minimum(), app::FigureOptions::shortest);
      EXPECT_EQ(box->maximum(), app::FigureOptions::longest);
    }
  }
  for (auto* box : form.findChildren<QSpinBox*>()) {
    texts << box->text();
    EXPECT_EQ(box->singleStep(), box->accessibleName() == "Resolution" ? 50 : 1);
  }
  for (char const* text : {"180.0 mm", "130.0 mm", "8.0 pt", "0.75 pt", "300 dpi", "6"})
    EXPECT_TRUE(texts.contains(text)) << text << " is not among " << texts.join(" | ").toStdString();
}

TEST_F(ExportScene, TheDialogBeginsWithTheLooksOfTheWindow)
{
  app::ViewState looks;
  looks.runsLook = app::RunsLook::Bands;
  looks.parameterLook = app::ParameterLook::Densities;
  app::ExportDialog other(app::figureContentOf(document, {0.0, 10.0}, {}), looks);
  EXPECT_EQ(other.form().options().runsLook, app::RunsLook::Bands);
  EXPECT_EQ(other.form().options().parameterLook, app::ParameterLook::Densities);
}

TEST_F(ExportScene, ItTellsTheSizeInPixelsAndHowManyParametersHaveRoom)
{
  auto const told = [&] {
    for (auto* label : dialog->findChildren<QLabel*>())
      if (label->text().contains(" pixels")) return label->text();
    return QString();
  };
  EXPECT_EQ(told(), QString::fromUtf8("180 \u00d7 130 mm; as PNG 2126 \u00d7 1535 pixels"));
  named<QDoubleSpinBox>("Width")->setValue(60.0);
  named<QDoubleSpinBox>("Height")->setValue(50.0);
  EXPECT_TRUE(waitFor([&] { return told().endsWith("pixels; room for 0 of 6 parameters"); }))
      << told().toStdString();
}

TEST_F(ExportScene, ThePreviewFillsItsRoomInTheShapeOfTheFigure)
{
  const QWidget& room = dialog->preview();
  auto const expectFits = [&](double shape) {
    const QSizeF size = QSizeF(dialog->preview().picture().size()) / room.devicePixelRatioF();
    EXPECT_NEAR(size.width() / size.height(), shape, 0.02);
    const double free = std::min(room.width() - size.width(), room.height() - size.height());
    EXPECT_NEAR(free, 24.0, 1.5);
  };
  expectFits(180.0 / 130.0);
  named<QDoubleSpinBox>("Height")->setValue(360.0);
  ASSERT_TRUE(previewed());
  expectFits(0.5);
  const double former = dialog->preview().picture().height();
  dialog->resize(dialog->width(), dialog->height() + 100);
  EXPECT_TRUE(waitFor([&] { return dialog->preview().picture().height() > former + 50.0; }));
}

TEST_F(ExportScene, ThePreviewStandsInTheMiddleAndOnSquaresIfItHasNoGround)
{
  auto const cornerOf = [&](QImage const& seen) {
    const double ratio = dialog->preview().devicePixelRatioF();
    const QSize size = dialog->preview().picture().size();
    const QPoint corner((seen.width() - size.width()) / 2, (seen.height() - size.height()) / 2);
    const int inside = static_cast<int>(2.0 * ratio);
    return seen.copy(QRect(corner + QPoint(inside, inside), QSize(8, 8)));
  };
  auto const isPlain = [](QImage const& part) {
    for (int y = 0; y < part.height(); ++y)
      for (int x = 0; x < part.width(); ++x)
        if (part.pixel(x, y) != qRgb(255, 255, 255)) return false;
    return true;
  };
  EXPECT_TRUE(isPlain(cornerOf(dialog->preview().grab().toImage())));
  for (auto* box : dialog->findChildren<QCheckBox*>())
    if (box->text() == "White ground") box->setChecked(false);
  ASSERT_TRUE(previewed());
  EXPECT_FALSE(isPlain(cornerOf(dialog->preview().grab().toImage())));
}

TEST_F(ExportScene, WhatIsOfOneScanIsNotKeptButAllElseIs)
{
  app::keepFigureOptions(otherOptions());
  const app::FigureOptions found = app::lastFigureOptions();
  expectSameManner(found, otherOptions());
  EXPECT_TRUE(found.title.isEmpty());
  EXPECT_TRUE(found.parameters.empty());
  EXPECT_TRUE(found.outputs.empty());
  app::keepFigureOptions({});
  expectSameManner(app::lastFigureOptions(), {});
}

TEST_F(ExportScene, SizesThatNoPresetHasAreAnOwnSize)
{
  auto* preset = named<QComboBox>("Size for");
  EXPECT_EQ(preset->currentText(), "2 columns, 180 mm");
  named<QDoubleSpinBox>("Height")->setValue(131.0);
  EXPECT_EQ(preset->currentIndex(), 0);
  named<QDoubleSpinBox>("Height")->setValue(130.0);
  EXPECT_EQ(preset->currentText(), "2 columns, 180 mm");
}

} // namespace
} // namespace runsieve::test
