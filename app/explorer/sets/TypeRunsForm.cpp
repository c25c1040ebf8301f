#include "app/explorer/sets/TypeRunsForm.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/sets/RunLists.h"
#include "app/explorer/sets/SetEdits.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace runsieve::app {

TypeRunsForm::TypeRunsForm(Document& ofDocument, QWidget* parent) : QDialog(parent), document(ofDocument)
{
  setWindowTitle("Set of typed runs");
  list = new QLineEdit;
  list->setPlaceholderText("3, 5, 10-15");
  list->setAccessibleName("Runs");
  list->setToolTip(
      "Keys of runs with commas between, and spans of numbers; keys with commas in double quotes");
  name = new QLineEdit;
  name->setPlaceholderText("as typed");
  name->setAccessibleName("Name");
  message = new QLabel;
  message->setTextFormat(Qt::PlainText);
  message->setWordWrap(true);
  message->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  message->setMinimumHeight(3 * fontMetrics().lineSpacing());
  message->setAccessibleName("Runs that are meant");
  buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText("Keep");
  auto* form = new QFormLayout;
  form->addRow("&Runs", list);
  form->addRow("&Name", name);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(message, 1);
  layout->addWidget(buttons);
  connect(list, &QLineEdit::textChanged, this, &TypeRunsForm::check);
  connect(buttons, &QDialogButtonBox::accepted, this, &TypeRunsForm::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &TypeRunsForm::reject);
  connect(&document, &Document::opened, this, &TypeRunsForm::reject);
  resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());
  check();
}

void TypeRunsForm::check()
{
  bool works = false;
  try {
    runs = typedRuns(list->text().toStdString(), document.scan());
    works = true;
    message->setText(QString("%L1 of %L2 runs").arg(runs.count()).arg(document.scan().runs.size()));
  } catch (GateError const& error) {
    message->setText(shownText(error.what()));
  }
  buttons->button(QDialogButtonBox::Ok)->setEnabled(works);
}

void TypeRunsForm::accept()
{
  const std::string typed = list->text().trimmed().toStdString();
  const std::string wanted = name->text().trimmed().toStdString();
  addSets(document, "Set of typed runs",
          {{wanted.empty() ? "runs " + typed : wanted, runs, "typed: " + typed}});
  QDialog::accept();
}

} // namespace runsieve::app
