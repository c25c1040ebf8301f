#include "app/view/SaveName.h"

#include <QFileDialog>

namespace runsieve::app {

QString askForSaveName(QWidget* parent, QString const& title, QString const& proposed, QString const& filter,
                       QString const& suffix)
{
  QFileDialog dialog(parent, title, proposed, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace runsieve::app
