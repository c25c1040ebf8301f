#include "app/explorer/window/Files.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/document/ReadFiles.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/SessionFile.h"
#include "app/view/SaveName.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include <exception>

namespace runsieve::app {

bool Files::save()
{
  return session.isEmpty() ? saveAs() : saveTo(session);
}

bool Files::saveAs()
{
  if (!document.isOpen()) return false;
  const QString proposed = !session.isEmpty() ? session : QFileInfo(name).completeBaseName() + ".sieve";
  const QString path =
      askForSaveName(&window, "Save session", proposed, "Sieve file (*.sieve *.json)", "sieve");
  return !path.isEmpty() && saveTo(path);
}

bool Files::mayWriteOver(QString const& path)
{
  if (path != session || digest.isEmpty() || !QFile::exists(path) || sessionDigest(path) == digest)
    return true;
  QMessageBox box(QMessageBox::Warning, "Runsieve", QString(), QMessageBox::Save | QMessageBox::Cancel,
                  &window);
  box.setTextFormat(Qt::PlainText);
  box.setText(QString("%1 has changed since it was opened or saved here. Replace it?")
                  .arg(QFileInfo(path).fileName()));
  box.setInformativeText("What another window or another user has saved would be lost. \"Save session as\" "
                         "keeps both.");
  box.button(QMessageBox::Save)->setText("&Replace");
  box.setDefaultButton(QMessageBox::Cancel);
  return box.exec() == QMessageBox::Save;
}

bool Files::saveTo(QString const& path)
{
  if (!mayWriteOver(path)) return false;
  try {
    requireOtherFile(document.source(), path);
    Session kept =
        autosave.fingerprint().empty() ? sessionOf(document) : sessionOf(document, autosave.fingerprint());
    view.keep(kept);
    writeSession(path, kept);
  } catch (std::exception const& error) {
    ErrorDialog::tell(&window, "The session could not be saved", QString::fromUtf8(error.what()),
                      FileUse::Writing);
    return false;
  }
  session = path;
  digest = sessionDigest(path);
  name = QFileInfo(path).fileName();
  RecentFiles::add(path);
  document.undoStack().setClean();
  Q_EMIT changed();
  Q_EMIT told(QString("Saved: %1").arg(path));
  return true;
}

bool Files::hasUnsavedWork() const
{
  State const& state = document.state();
  const bool isWorth = document.isOpen() && !(state.gates.empty() && state.sets.empty());
  return isWorth && !document.undoStack().isClean();
}

bool Files::mayClose()
{
  // What comes in while the user is asked must not take the place of what he is asked about.
  if (isReading()) {
    cancel();
    Q_EMIT told("What was being read was given up");
  }
  return !hasUnsavedWork() || askToSave();
}

bool Files::mayReplace()
{
  const int step = document.undoStack().index();
  if (!hasUnsavedWork() || givenUp == step) return true;
  if (!askToSave()) return false;
  if (hasUnsavedWork()) givenUp = step;
  return true;
}

bool Files::askToSave()
{
  QMessageBox box(QMessageBox::Question, "Runsieve", QString(),
                  QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window);
  box.setTextFormat(Qt::PlainText);
  box.setText("Do you want to save gates, sets and view?");
  box.setInformativeText(toolTipText(title()));
  switch (box.exec()) {
  case QMessageBox::Save:
    return save();
  case QMessageBox::Discard:
    return true;
  default:
    return false;
  }
}

} // namespace runsieve::app
