#include "DocumentScene.h"

#include "app/explorer/controls/SearchableBox.h"
#include "app/explorer/gates/GateFields.h"
#include "app/explorer/gates/GateForm.h"
#include "app/explorer/gates/GateKinds.h"
#include "app/explorer/gates/GateLabel.h"

#include <runsieve/core/gate/GateText.h>

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>

namespace runsieve::test {
namespace {

/// A scan with a parameter of texts, one with the name of an output, and a run that has failed.
std::shared_ptr<Scan const> variedScan()
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 5.0, 10.0};
  for (int run = 1; run <= 6; ++run) scan->runs.push_back({std::to_string(run), RunStatus::Complete, 3});
  scan->runs[5].status = RunStatus::Failed;
  ScanParameter media;
  media.label.name = "medium";
  media.values = {0, 1, 0, 1, 0, 1};
  media.texts = {"LB", "M9, rich"};
  ScanParameter twin;
  twin.label.name = "A";
  twin.values = {1, 2, 3, 4, 5, 6};
  scan->parameters.push_back(std::move(media));
  scan->parameters.push_back(std::move(twin));
  double* a = scan->addOutput({"A", "", "", ""});
  for (int i = 0; i < 18; ++i) *a++ = i;
  scan->check();
  return scan;
}

struct GateFormScene : testing::Test
{
  app::Document document;
  std::unique_ptr<app::GateForm> form;

  GateFormScene() { document.open(variedScan(), {}); }

  void open(std::optional<std::size_t> index = std::nullopt)
  {
    form = std::make_unique<app::GateForm>(document, index);
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
  }
  [[nodiscard]] QLineEdit* field(QString const& name) const
  {
    for (QLineEdit* edit : form->findChildren<QLineEdit*>())
      if (edit->accessibleName() == name) return edit;
    return nullptr;
  }
  void type(QString const& name, QString const& text) const
  {
    QLineEdit* edit = field(name);
    ASSERT_NE(edit, nullptr) << name.toStdString();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
  }
  [[nodiscard]] std::string told(QString const& name) const
  {
    for (QLabel* label : form->findChildren<QLabel*>())
      if (label->accessibleName() == name) return label->text().toStdString();
    return "";
  }
  [[nodiscard]] bool counted() const
  {
    return waitFor(
        [&] { return form->isSettled() && told("Runs that pass").find("of") != std::string::npos; });
  }
  [[nodiscard]] QPushButton* ok() const
  {
    return form->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  }
};

TEST_F(GateFormScene, ATypedTextIsAGateAndFillsTheFields)
{
  open();
  type("Gate as text", "not ever A @ 5..10 in 3..8");
  EXPECT_EQ(field("Times from")->text(), "5");
  EXPECT_EQ(field("Times to")->text(), "10");
  EXPECT_EQ(field("Values from")->text(), "3");
  EXPECT_EQ(field("Values to")->text(), "8");
  ASSERT_TRUE(counted());
  EXPECT_EQ(told("Runs that pass"), "4 of 6 runs pass this gate, 4 pass with the other gates");
  QTest::mouseClick(ok(), Qt::LeftButton);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(formatGate(document.state().gates[0].gate), "not ever A @ 5..10 in 3..8");
  EXPECT_EQ(document.selectedGate(), 0u);
  EXPECT_EQ(document.undoStack().count(), 1);
  document.undoStack().undo();
  EXPECT_TRUE(document.state().gates.empty());
}

TEST_F(GateFormScene, FieldsThatAreTypedAreTheText)
{
  open();
  type("Times from", "5");
  type("Times to", "5");
  type("Values from", "-1e3");
  EXPECT_EQ(field("Gate as text")->text(), "A @ 5 in -1000..");
  EXPECT_TRUE(ok()->isEnabled());
}

TEST_F(GateFormScene, TheChartsShowTheGateWhileItIsTypedAndNoneAfterCancel)
{
  open();
  type("Values from", "9");
  ASSERT_TRUE(counted());
  ASSERT_NE(document.previewedGate(), nullptr);
  EXPECT_EQ(document.passing().count(), 3u);
  QTest::keyClick(form.get(), Qt::Key_Escape);
  EXPECT_EQ(document.previewedGate(), nullptr);
  EXPECT_EQ(document.passing().count(), 6u);
  EXPECT_EQ(document.undoStack().count(), 0);
}

TEST_F(GateFormScene, AGateOnAClusterIsNotShownInTheChartsWhileItIsTyped)
{
  open();
  type("Values from", "9");
  ASSERT_TRUE(counted());
  ASSERT_NE(document.previewedGate(), nullptr);
  // Pasted: what is typed is wrong on the way, and shows nothing then.
  QApplication::clipboard()->setText("cluster 0 of 2 (A)");
  field("Gate as text")->selectAll();
  QTest::keyClick(field("Gate as text"), Qt::Key_V, Qt::ControlModifier);
  ASSERT_TRUE(waitFor([this] { return document.previewedGate() == nullptr; }));
  EXPECT_EQ(document.passing().count(), 6u);
}

TEST_F(GateFormScene, WhatIsWrongIsToldInWordsAndCannotBeAdded)
{
  open();
  struct Case
  {
    char const* text;
    char const* words;
  };
  for (Case const& wrong : {Case{"B @ 5 in 1..2", "no output \"B\""}, Case{"A @ 5 in 3..1", "lies above"},
                            Case{"A @ 50 in 1..2", "outside of the scan"}, Case{"A @ 5", "in"},
                            Case{"medium is TB", "no value \"TB\""}, Case{"runs 9", "no run \"9\""},
                            Case{"A in 1..2", "is an output and a parameter"}, Case{"", ""}}) {
    type("Gate as text", wrong.text);
    EXPECT_THAT(told("Error"), testing::HasSubstr(wrong.words)) << wrong.text;
    EXPECT_FALSE(ok()->isEnabled()) << wrong.text;
    EXPECT_EQ(document.previewedGate(), nullptr) << wrong.text;
  }
  type("Gate as text", "A @ 5 in 1..2");
  EXPECT_TRUE(ok()->isEnabled());
  type("Values from", "1,5");
  EXPECT_THAT(told("Error"), testing::HasSubstr("Values from: expected a number"));
  EXPECT_FALSE(ok()->isEnabled());
}

TEST_F(GateFormScene, AFaultLeavesTheFieldsAsHighAsTheyWere)
{
  auto const scan = variedScan();
  for (int i = 0; i < 12; ++i) {
    double* values = const_cast<Scan&>(*scan).addOutput(
        {QString("A long name of an output, number %1").arg(i).toStdString(), "", "", ""});
    std::fill_n(values, 18, 1.0);
  }
  document.open(scan, {});
  open();
  const QSize before = form->size();
  for (char const* text : {"foo in 1..2", "A in x..y", "A @ 0..10 in 1..2"}) {
    type("Gate as text", text);
    QTest::qWait(100); // until the counts are told
    EXPECT_EQ(form->size(), before) << text;
    for (QLineEdit* edit : form->findChildren<QLineEdit*>())
      if (edit->isVisible() && !edit->accessibleName().isEmpty()) // one inside of a box has less room
        EXPECT_GE(edit->height(), edit->sizeHint().height()) << text;
    auto* message = form->findChild<QScrollArea*>()->widget();
    EXPECT_GE(message->height(), message->heightForWidth(message->width())) << "it scrolls, and is not cut";
  }
}

TEST_F(GateFormScene, TimesBetweenThoseOfTheScanAreToldOf)
{
  open();
  type("Times from", "4");
  type("Times to", "4");
  EXPECT_THAT(told("Note"), testing::HasSubstr("time 4 -> 5"));
}

TEST_F(GateFormScene, AnUnchangedGateIsNoStep)
{
  document.change("Add", [](app::State& state) {
    state.gates.push_back({"x", parseGate("max(A) in 5.."), false});
  });
  open(0);
  EXPECT_EQ(field("Name")->text(), "x");
  QTest::mouseClick(ok(), Qt::LeftButton);
  EXPECT_EQ(document.undoStack().count(), 1);
  open(0);
  type("Name", "late & large");
  type("Values from", "6");
  QTest::mouseClick(ok(), Qt::LeftButton);
  EXPECT_EQ(document.undoStack().count(), 2);
  EXPECT_EQ(document.state().gates[0].name, "late & large");
  EXPECT_EQ(formatGate(document.state().gates[0].gate), "max(A) in 6..inf");
  EXPECT_FALSE(document.state().gates[0].on);
}

TEST_F(GateFormScene, AParameterIsFoundByAPartOfItsName)
{
  document.open(lineScan(), {});
  open();
  auto* columns = form->findChild<app::SearchableBox*>();
  columns->setFocus();
  columns->lineEdit()->selectAll();
  QTest::keyClicks(columns->lineEdit(), "k3");
  QTest::keyClick(columns->lineEdit(), Qt::Key_Return);
  // A part of a name is completed by the box that opens below, a whole one is taken as it is.
  columns->setCurrentIndex(columns->findText("k3 (parameter)"));
  Q_EMIT columns->activated(columns->currentIndex());
  EXPECT_FALSE(field("Times from")->isVisible());
  type("Values to", "0.5");
  EXPECT_EQ(field("Gate as text")->text(), "k3 in ..0.5");
}

TEST_F(GateFormScene, ANewGateBeginsWithTheOutputThatIsShown)
{
  document.open(lineScan(), {});
  document.change("Show", [](app::State& state) { state.view.outputs = {1}; });
  open();
  EXPECT_EQ(form->windowTitle(), "New gate");
  EXPECT_EQ(ok()->text().remove('&'), "Add");
  EXPECT_EQ(field("Name")->text(), "Gate 1");
  EXPECT_EQ(field("Gate as text")->text(), "B @ .. in ..");
  EXPECT_TRUE(ok()->isEnabled());
  EXPECT_EQ(field("Times from")->placeholderText(), "0");
  EXPECT_EQ(field("Times to")->placeholderText(), "10");
}

TEST_F(GateFormScene, AGateThatIsChangedIsShownAsItIs)
{
  document.change("Add", [](app::State& state) {
    state.gates.push_back({"x", parseGate("max(A) in 5.."), true});
    state.gates.push_back({"y", parseGate("status failed"), true});
  });
  open(1);
  EXPECT_EQ(form->windowTitle(), "Edit gate");
  EXPECT_EQ(ok()->text().remove('&'), "Change");
  EXPECT_EQ(field("Name")->text(), "y");
  EXPECT_EQ(field("Gate as text")->text(), "status failed");
  QTest::mouseClick(ok(), Qt::LeftButton);
  EXPECT_EQ(document.selectedGate(), 1u);
}

TEST_F(GateFormScene, AGateWithoutANameGetsOne)
{
  open();
  type("Name", "  ");
  QTest::mouseClick(ok(), Qt::LeftButton);
  ASSERT_EQ(document.state().gates.size(), 1u);
  EXPECT_EQ(document.state().gates[0].name, "Gate 1");
  EXPECT_TRUE(document.state().gates[0].on);
  EXPECT_EQ(document.previewedGate(), nullptr);
}

TEST_F(GateFormScene, OnlyTheFieldsOfTheKindShow)
{
  open();
  struct Case
  {
    char const* text;
    bool columns, times, values, texts, runs, statuses, cluster;
  };
  auto const isShown = [&](QString const& name) {
    for (QWidget* widget : form->findChildren<QWidget*>())
      if (widget->accessibleName() == name && widget->isVisible()) return true;
    return false;
  };
  for (Case const& each : {Case{"A @ 5 in 1..2", true, true, true, false, false, false, false},
                           Case{"timeofmin(A) in 1..2", true, true, true, false, false, false, false},
                           Case{"Parameter: A in 1..2", true, false, true, false, false, false, false},
                           Case{"medium is LB", true, false, false, true, false, false, false},
                           Case{"status failed", false, false, false, false, false, true, false},
                           Case{"runs 1", false, false, false, false, true, false, false},
                           Case{"cluster 0 of 2 (A)", true, false, false, false, false, false, true}}) {
    QApplication::clipboard()->setText(each.text);
    field("Gate as text")->selectAll();
    QTest::keyClick(field("Gate as text"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(isShown("Of"), each.columns) << each.text;
    EXPECT_EQ(isShown("Times from"), each.times) << each.text;
    EXPECT_EQ(isShown("Values from"), each.values) << each.text;
    EXPECT_EQ(isShown("Values"), each.texts || each.values) << each.text;
    EXPECT_EQ(isShown("Runs"), each.runs) << each.text;
    EXPECT_EQ(isShown("Status"), each.statuses) << each.text;
    EXPECT_EQ(isShown("Number of clusters"), each.cluster) << each.text;
    EXPECT_TRUE(isShown("Invert"));
    EXPECT_TRUE(isShown("Asks for"));
  }
}

TEST_F(GateFormScene, EachFieldOfTheFormChangesTheText)
{
  open();
  auto const text = [this] { return field("Gate as text")->text().toStdString(); };
  auto const paste = [this](QString const& gate) {
    field("Gate as text")->setText(gate);
    Q_EMIT field("Gate as text")->textEdited(gate);
  };
  auto const box = [this](QString const& title) {
    for (QCheckBox* check : form->findChildren<QCheckBox*>())
      if (check->text() == title) return check;
    return static_cast<QCheckBox*>(nullptr);
  };
  paste("status failed");
  box("short")->click();
  EXPECT_EQ(text(), "status short, failed");
  box("failed")->click();
  box("short")->click();
  EXPECT_THAT(told("Error"), testing::HasSubstr("status is missing"));
  paste("A in ..5");
  paste("runs 1");
  box("exactly the other runs pass")->click();
  EXPECT_EQ(text(), "not runs 1");
  type("Runs", "2, 4-5");
  EXPECT_EQ(text(), "not runs 2, 4-5");
  type("Runs", "");
  EXPECT_THAT(told("Error"), testing::HasSubstr("uns are missing"));
  paste("cluster 0 of 2 (A)");
  for (QSpinBox* spin : form->findChildren<QSpinBox*>())
    spin->setValue(spin->accessibleName() == "Number of clusters" ? 5 : 3);
  EXPECT_EQ(text(), "cluster 3 of 5 (A, curves)");
  for (QComboBox* combo : form->findChildren<QComboBox*>())
    if (combo->accessibleName() == "What the shape of a run is") {
      combo->setCurrentIndex(1);
      Q_EMIT combo->activated(1);
    }
  EXPECT_EQ(text(), "cluster 3 of 5 (A, phase)");
}

TEST_F(GateFormScene, AnotherKindKeepsTheColumnIfItMayBeOnIt)
{
  document.open(lineScan(), {});
  open();
  auto const choose = [this](GateKind kind) {
    for (QComboBox* combo : form->findChildren<QComboBox*>())
      if (combo->accessibleName() == "Asks for") {
        combo->setCurrentIndex(combo->findData(static_cast<int>(kind)));
        Q_EMIT combo->activated(combo->currentIndex());
      }
    return field("Gate as text")->text().toStdString();
  };
  field("Gate as text")->setText("B @ 5 in 0.1..");
  Q_EMIT field("Gate as text")->textEdited("B @ 5 in 0.1..");
  EXPECT_EQ(choose(GateKind::Max), "max(B) @ 5 in 0.1..");
  EXPECT_EQ(choose(GateKind::Never), "never B @ 5 in 0.1..");
  auto* columns = form->findChild<app::SearchableBox*>();
  EXPECT_EQ(columns->count(), 2) << "no parameters";
  (void)choose(GateKind::Inside);
  EXPECT_EQ(columns->count(), 2 + 6);
  (void)choose(GateKind::Is);
  EXPECT_EQ(columns->count(), 6);
}

TEST_F(GateFormScene, TextParametersLieInNoRange)
{
  open();
  auto* columns = form->findChild<app::SearchableBox*>();
  QStringList offered;
  for (int i = 0; i < columns->count(); ++i) offered << columns->itemText(i);
  EXPECT_EQ(offered, (QStringList{"A", "A (parameter)"}));
  field("Gate as text")->setText("medium is LB");
  Q_EMIT field("Gate as text")->textEdited("medium is LB");
  EXPECT_EQ(columns->itemText(0), "medium (parameter)");
  bool isExample = false;
  for (QLineEdit* edit : form->findChildren<QLineEdit*>())
    isExample |= edit->isVisible() && edit->placeholderText() == "LB, ...";
  EXPECT_TRUE(isExample);
}

TEST_F(GateFormScene, WhileWhatIsTypedIsNoGateNothingIsCounted)
{
  open();
  ASSERT_TRUE(counted());
  type("Values from", "x");
  EXPECT_EQ(told("Runs that pass"), "Not a gate yet.");
  EXPECT_TRUE(form->isSettled());
  EXPECT_EQ(document.previewedGate(), nullptr);
  QTest::keyClick(form.get(), Qt::Key_Return);
  EXPECT_TRUE(form->isVisible());
  form->accept();
  EXPECT_TRUE(document.state().gates.empty());
  type("Values from", "9");
  EXPECT_EQ(told("Error"), "") << "the fault is gone";
  ASSERT_TRUE(counted());
  EXPECT_EQ(told("Runs that pass"), "3 of 6 runs pass this gate, 3 pass with the other gates");
}

TEST_F(GateFormScene, FaultsBeginWithACapital)
{
  open();
  type("Gate as text", "B @ 5 in 1..2");
  EXPECT_TRUE(QString::fromStdString(told("Error")).front().isUpper());
}

TEST_F(GateFormScene, AnotherScanClosesTheForm)
{
  open();
  document.open(lineScan(), {});
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(form->result(), QDialog::Rejected);
}

TEST(GateFieldsForm, ShowsTheUnitOfTheTimes)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 5.0};
  scan->time.unit = "min";
  scan->runs.push_back({"1", RunStatus::Complete, 2});
  std::fill_n(scan->addOutput({"A", "", "", ""}), 2, 0.0);
  auto const hasTitle = [&](QString const& title) {
    app::GateFields fields(*scan);
    for (QLabel* label : fields.findChildren<QLabel*>())
      if (label->text() == title) return true;
    return false;
  };
  EXPECT_TRUE(hasTitle("Times [min]"));
  scan->time.unit.clear();
  EXPECT_TRUE(hasTitle("Times"));
}

TEST(GateFieldsForm, TitlesOfAllRowsHaveTheSameWidthAndAreNotCut)
{
  auto const scan = lineScan();
  const app::GateFields fields(*scan);
  std::set<int> widths;
  for (QLabel* label : fields.findChildren<QLabel*>()) {
    if (!label->buddy()) continue;
    widths.insert(label->width());
    EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
        << label->text().toStdString();
    EXPECT_FALSE(label->buddy()->toolTip().isEmpty()) << label->text().toStdString();
  }
  EXPECT_EQ(widths.size(), 1u);
}

TEST(GateFieldsForm, AGateThatIsSetIsNotTakenForTyping)
{
  auto const scan = lineScan();
  app::GateFields fields(*scan);
  QSignalSpy edited(&fields, &app::GateFields::edited);
  fields.setGate(parseGate("A @ 5 in 1..2"));
  fields.setGate(parseGate("cluster 1 of 3 (A, phase)"));
  EXPECT_EQ(edited.count(), 0);
}

TEST(GateFieldsForm, AScanWithoutOutputsHasGatesOnParameters)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0};
  scan->runs.push_back({"1", RunStatus::Complete, 1});
  const app::GateFields fields(*scan);
  EXPECT_THROW((void)fields.gate(), GateError) << "there is nothing to be on";
}

/// Every kind, and names that need care.
struct GateTexts : testing::TestWithParam<char const*>
{};

TEST_P(GateTexts, AreReadBackEqualFromTheFields)
{
  auto const scan = variedScan();
  app::GateFields fields(*scan);
  const Gate gate = parseGate(GetParam());
  fields.setGate(gate);
  EXPECT_EQ(formatGate(fields.gate()), formatGate(gate));
  EXPECT_EQ(fields.gate(), gate);
}

INSTANTIATE_TEST_SUITE_P(AllKinds, GateTexts,
                         testing::Values("A @ .. in 1..2", "not A @ 5 in 1..", "ever A @ 5.. in ..2",
                                         "never A in 1..2", "crosses A @ ..5 in 3..3",
                                         "max(A) @ 0..5 in 1..2", "min(A) in 1..2", "mean(A) in 1..2",
                                         "last(A) in 1..2", "timeofmax(A) in 1..2", "timeofmin(A) in 1..2",
                                         "not medium is LB, \"M9, rich\"", "status short, failed",
                                         "runs 3, 5, 10-15", "cluster 1 of 3 (A, phase)",
                                         "Parameter: A in 2..3", "\"unknown \"\"x\"\"\" @ 5 in 1..2"));

TEST(GateLabels, AreAsShortAsTheyMeanTheSame)
{
  auto scan = std::make_shared<Scan>();
  scan->times = {0.0, 5.0};
  scan->runs.push_back({"1", RunStatus::Complete, 2});
  for (ColumnLabel label : {ColumnLabel{"A", "", "", "Molecule"}, ColumnLabel{"B", "", "", "Molecule"},
                            ColumnLabel{"B", "", "", "Reaction"}, ColumnLabel{"C in -inf..inf", "", "", ""}})
    std::fill_n(scan->addOutput(label), 2, 0.0);
  ScanParameter twin;
  twin.label.name = "A";
  twin.values = {1.0};
  scan->parameters.push_back(std::move(twin));
  auto const label = [&](char const* text) { return app::gateLabel(parseGate(text), *scan); };
  EXPECT_EQ(label("Molecule: A @ 5 in 1.."), "A @ 5 in 1..");
  EXPECT_EQ(label("Molecule: A in 1.."), "Molecule: A in 1..") << "the bare name is that of a parameter too";
  EXPECT_EQ(label("max(Molecule: B) in ..2"), "max(Molecule: B) in ..2") << "there are two";
  EXPECT_EQ(label("not ever Molecule: A in .."), "not ever A in ..");
  EXPECT_EQ(label("\"gone\" @ 5 in 1..2"), "gone @ 5 in 1..2");
  for (char const* text : {"Molecule: A @ 5 in 1..", "Reaction: B @ .. in ..3", "C in -inf..inf @ 0 in 2..3",
                           "C in -inf..inf @ 0 in ..", "runs 1", "status short"}) {
    Gate gate = parseGate(text);
    Gate read = parseGate(label(text));
    read.column = gate.column;
    EXPECT_EQ(read, gate) << text << " as " << label(text);
  }
}

TEST(GateKindWords, AreThereForEveryKindOnce)
{
  std::set<GateKind> kinds;
  for (app::GateKindEntry const& entry : app::gateKinds()) {
    kinds.insert(entry.kind);
    EXPECT_FALSE(entry.words.isEmpty());
    EXPECT_FALSE(entry.hint.isEmpty());
  }
  EXPECT_EQ(kinds.size(), 14u);
  EXPECT_EQ(app::gateKinds().size(), 14u);
}

} // namespace
} // namespace runsieve::test
