#include "app/explorer/window/OpenWindows.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/session/Autosave.h"
#include "app/explorer/window/ExplorerWindow.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QMessageBox>

#include <algorithm>
#include <vector>

namespace runsieve::app {

namespace {

int askAbout(RecoverableSession const& crashed, QWidget& window)
{
  QMessageBox box(QMessageBox::Question, "Runsieve", QString(),
                  QMessageBox::Open | QMessageBox::Discard | QMessageBox::Cancel, &window);
  box.setTextFormat(Qt::PlainText);
  box.setText("Runsieve ended unexpectedly. Do you want to go on where you were?");
  box.setInformativeText(
      toolTipText(QString("%1, %2").arg(crashed.data, crashed.savedAt.toString("yyyy-MM-dd hh:mm"))));
  QAbstractButton* later = box.button(QMessageBox::Cancel);
  later->setText("&Later");
  later->setToolTip("Ask again at the next start");
  return box.exec();
}

/// What the user wants to go on with, of all that a crash has left. What is not decided stays for the next
/// start.
std::vector<RecoverableSession> wantedOf(std::vector<RecoverableSession> const& left, QWidget& window)
{
  std::vector<RecoverableSession> wanted;
  for (RecoverableSession const& crashed : left) {
    const int answer = askAbout(crashed, window);
    if (answer == QMessageBox::Cancel) break;
    if (answer == QMessageBox::Discard)
      discardRecoverable(crashed);
    else
      wanted.push_back(crashed);
  }
  return wanted;
}

} // namespace

void openWindows(QStringList const& files, ReadOptions const& options)
{
  ExplorerWindow* window = newExplorerWindow();
  const auto wanted = wantedOf(recoverableSessions(), *window);
  bool isFree = true;
  const auto freeWindow = [&]() -> ExplorerWindow& {
    if (!isFree) window = newExplorerWindow();
    isFree = false;
    return *window;
  };
  for (RecoverableSession const& crashed : wanted) freeWindow().files().recover(crashed);
  const auto isWanted = [&](QString const& file) {
    return std::any_of(wanted.begin(), wanted.end(), [&](RecoverableSession const& crashed) {
      return QFileInfo(crashed.data) == QFileInfo(file);
    });
  };
  for (QString const& file : files)
    if (!isWanted(file)) freeWindow().open(file, options);
}

} // namespace runsieve::app
