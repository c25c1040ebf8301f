#pragma once

#include "app/explorer/document/Document.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace runsieve::app {

/// Asks for runs by their keys and for a name, and makes a set of them.
class TypeRunsForm : public QDialog
{
  Q_OBJECT

public:
  explicit TypeRunsForm(Document& document, QWidget* parent = nullptr);

public Q_SLOTS:
  void accept() override;

private:
  void check();

  Document& document;
  RunSet runs;
  QLineEdit* name = nullptr;
  QLineEdit* list = nullptr;
  QLabel* message = nullptr;
  QDialogButtonBox* buttons = nullptr;
};

} // namespace runsieve::app
