#include "app/explorer/gates/GateForm.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/gates/GateFields.h"
#include "app/explorer/gates/GateLabel.h"

#include <runsieve/core/gate/GateText.h>

#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace runsieve::app {

GateForm::GateForm(Document& ofDocument, std::optional<std::size_t> ofIndex, QWidget* parent)
    : QDialog(parent), document(ofDocument), index(ofIndex), counts(ofDocument, ofIndex)
{
  setWindowTitle(index ? "Edit gate" : "New gate");
  build();
  constexpr int pause = 60; // ms
  soon.setInterval(pause);
  soon.setSingleShot(true);
  connect(&soon, &QTimer::timeout, this, &GateForm::preview);
  connect(fields, &GateFields::edited, this, &GateForm::takeFields);
  connect(text, &QLineEdit::textEdited, this, &GateForm::takeText);
  connect(&counts, &GateCounts::counted, this, [this](std::size_t alone, std::size_t all) {
    passing->setText(QString("%L1 of %L2 runs pass this gate, %L3 pass with the other gates")
                         .arg(alone)
                         .arg(document.scan().runs.size())
                         .arg(all));
  });
  connect(&counts, &GateCounts::failed, this, [this](QString const& why) { tell(why, true); });
  connect(&document, &Document::opened, this, &GateForm::reject);
  begin();
}

void GateForm::build()
{
  name = new QLineEdit;
  name->setAccessibleName("Name");
  fields = new GateFields(document.scan());
  text = new QLineEdit;
  text->setAccessibleName("Gate as text");
  text->setToolTip("The gate in one line, as --gate of the commands takes it: A @ 10..20 in 2..5");
  message = new QLabel;
  message->setTextFormat(Qt::PlainText);
  message->setWordWrap(true);
  message->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  // It has the same room at all times, so that the form stays still, and scrolls if it takes more.
  constexpr int lines = 4;
  auto* room = new QScrollArea;
  room->setFrameShape(QFrame::NoFrame);
  room->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  room->setFocusPolicy(Qt::NoFocus);
  room->setWidgetResizable(true);
  room->setWidget(message);
  room->setFixedHeight(lines * fontMetrics().lineSpacing());
  passing = new QLabel;
  passing->setTextFormat(Qt::PlainText);
  passing->setWordWrap(true);
  passing->setFixedHeight(2 * fontMetrics().lineSpacing());
  passing->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  passing->setAccessibleName("Runs that pass");
  buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText(index ? "Change" : "Add");
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(8);
  layout->addWidget(fields->rowOf("&Name", name));
  layout->addWidget(fields);
  layout->addStretch(1);
  layout->addWidget(line);
  layout->addWidget(fields->rowOf("As &text", text));
  layout->addWidget(room);
  layout->addWidget(passing);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &GateForm::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &GateForm::reject);
  resize(fontMetrics().averageCharWidth() * 70, sizeHint().height());
}

void GateForm::begin()
{
  State const& state = document.state();
  if (index) {
    name->setText(QString::fromStdString(state.gates[*index].name));
    typed = state.gates[*index].gate;
  } else {
    name->setText(QString::fromStdString(document.newGateName()));
    Gate gate;
    Scan const& scan = document.scan();
    const bool hasOutput = !state.view.outputs.empty() && state.view.outputs.front() < scan.outputs.size();
    if (hasOutput) {
      gate.column = scan.outputs[state.view.outputs.front()].label.fullName();
      gate.span = GateSpan();
    }
    typed = gate;
  }
  fields->setGate(*typed);
  text->setText(QString::fromStdString(gateLabel(*typed, document.scan())));
  text->setCursorPosition(0);
  check();
}

void GateForm::takeFields()
{
  typed.reset();
  try {
    typed = fields->gate();
    text->setText(QString::fromStdString(gateLabel(*typed, document.scan())));
    text->setCursorPosition(0);
  } catch (GateError const& error) {
    tell(shownText(error.what()), true);
    return;
  }
  check();
}

void GateForm::takeText()
{
  typed.reset();
  try {
    typed = parseGate(text->text().toStdString());
    fields->setGate(*typed);
  } catch (GateError const& error) {
    tell(shownText(error.what()), true);
    return;
  }
  check();
}

void GateForm::check()
{
  try {
    const ResolvedGate resolved = resolveGate(*typed, document.scan());
    tell(resolved.note.empty() ? QString()
                               : "On the times of the scan: " + QString::fromStdString(resolved.note),
         false);
  } catch (GateError const& error) {
    typed.reset();
    tell(shownText(error.what()), true);
  }
}

void GateForm::tell(QString const& told, bool isError)
{
  constexpr int most = 500;
  QString words = told.size() > most ? told.left(most) + QString::fromUtf8("\u2026") : told;
  if (!words.isEmpty()) words[0] = words[0].toUpper();
  message->setText(words);
  message->setAccessibleName(isError ? "Error" : "Note");
  buttons->button(QDialogButtonBox::Ok)->setEnabled(!isError);
  if (isError) {
    soon.stop();
    counts.cancel();
    document.cancelPreview();
    passing->setText("Not a gate yet.");
  } else {
    soon.start();
  }
}

void GateForm::preview()
{
  if (!typed) return;
  // What takes long is counted only.
  if (typed->kind != GateKind::Cluster)
    document.previewGate(index.value_or(document.state().gates.size()), *typed);
  else
    document.cancelPreview();
  passing->setText(QString::fromUtf8("Counting \u2026"));
  counts.count(*typed);
}

void GateForm::accept()
{
  if (!typed) return;
  document.cancelPreview();
  const std::string wanted = name->text().trimmed().toStdString();
  NamedGate gate{wanted.empty() ? document.newGateName() : wanted, *typed, true};
  if (!index) {
    document.change("New gate", [&](State& state) { state.gates.push_back(gate); });
    document.selectGate(document.state().gates.size() - 1);
  } else {
    gate.on = document.state().gates[*index].on;
    document.change("Edit gate", [&](State& state) { state.gates[*index] = gate; });
    document.selectGate(*index);
  }
  QDialog::accept();
}

void GateForm::reject()
{
  document.cancelPreview();
  QDialog::reject();
}

bool GateForm::edit(Document& document, std::optional<std::size_t> index, QWidget* parent)
{
  GateForm form(document, index, parent);
  return form.exec() == QDialog::Accepted;
}

} // namespace runsieve::app
