#include "app/explorer/window/Files.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/session/ErrorDialog.h"
#include "app/explorer/session/RecentFiles.h"
#include "app/explorer/session/SessionFile.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include <exception>
#include <utility>

namespace runsieve::app {

namespace {

constexpr char scanFilter[] =
    "Scans and sessions (*.csv *.tsv *.txt *.dat *.gdat *.scan *.gz *.npy *.npz *.h5 *.hdf5 *.rsd *.sieve "
    "*.json);;All files (*)";

} // namespace

Files::Files(Document& ofDocument, WindowView ofView, QWidget& ofWindow)
    : QObject(&ofWindow), document(ofDocument), view(std::move(ofView)), window(ofWindow), loader(ofDocument),
      autosave(ofDocument, view.keep), watch(ofDocument)
{
  connectReader();
  connectSessions();
  connect(&watch, &FileWatch::changedOnDisk, this, &Files::changedOnDisk);
  connect(&watch, &FileWatch::goneFromDisk, this, &Files::goneFromDisk);
  connect(&watch, &FileWatch::backOnDisk, this, &Files::backOnDisk);
}

void Files::connectReader()
{
  connect(&reader, &Opening::finished, this,
          [this](std::shared_ptr<Scan const> const& scan, ScanSource const& source, State const& state) {
            if (!mayReplace()) return;
            document.open(scan, source, state);
            session.clear();
            givenUp.reset();
            name = QFileInfo(reader.path()).fileName();
            if (!source.path.empty()) RecentFiles::add(reader.path(), source.read);
          });
  for (Opening* one : {&reader, &loader.opening()}) {
    connect(one, &Opening::begun, this, &Files::begun);
    connect(one, &Opening::progressed, this, &Files::progressed);
    connect(one, &Opening::ended, this, &Files::changed);
  }
  connect(&reader, &Opening::failed, this, [this](QString const& path, QString const& message) {
    ErrorDialog::tell(&window, QFileInfo(path).fileName() + " could not be opened", message);
  });
}

void Files::connectSessions()
{
  loader.askBeforeTaking([this] {
    if (mayReplace()) return true;
    origin = Origin::File;
    return false;
  });
  connect(&loader, &SessionLoader::opened, this,
          [this](Session const& opened, QString const& path, QStringList const&) {
            givenUp.reset();
            view.show(opened);
            const bool losesSteps = origin == Origin::Reread && hadSteps;
            take(opened, path);
            Q_EMIT changed();
            if (losesSteps) Q_EMIT told("The scan was read again; former steps cannot be undone");
          });
  connect(&loader, &SessionLoader::differs, this, [this](QStringList const& lines) {
    QMessageBox box(QMessageBox::Information, "Runsieve", QString(), QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);
    box.setText("The data are not those that gates and sets were made for. These were kept.");
    box.setInformativeText(toolTipText(lines.join('\n')));
    box.exec();
  });
  connect(&loader, &SessionLoader::failed, this, [this](QString const& message) {
    const Origin failed = std::exchange(origin, Origin::File);
    ErrorDialog::tell(&window,
                      failed == Origin::Reread  ? "The scan could not be read again; what was read stays"
                      : failed == Origin::Crash ? "The session could not be recovered"
                                                : "The session could not be opened",
                      message);
  });
  connect(&loader, &SessionLoader::dataMissing, this, &Files::findData);
}

void Files::take(Session const& opened, QString const& path)
{
  switch (std::exchange(origin, Origin::File)) {
  case Origin::File:
    session = path;
    digest = sessionDigest(path);
    name = QFileInfo(path).fileName();
    RecentFiles::add(path);
    document.undoStack().setClean();
    break;
  case Origin::Crash:
    // It is saved nowhere yet, and must outlive the next crash.
    session.clear();
    name = QFileInfo(QString::fromStdString(opened.path)).fileName();
    autosave.adopt(left);
    document.undoStack().resetClean();
    break;
  case Origin::Reread:
    if (unsaved) document.undoStack().resetClean();
    break;
  }
}

void Files::findData(QString const& path, QString const& data)
{
  QMessageBox box(QMessageBox::Question, "Runsieve", QString(), QMessageBox::Open | QMessageBox::Cancel,
                  &window);
  box.setTextFormat(Qt::PlainText);
  box.setText(data.isEmpty() ? QString("The session does not tell where its data are.")
                             : QString("The data of the session are not where they were: %1").arg(data));
  box.setInformativeText("Do you want to look for them?");
  if (box.exec() != QMessageBox::Open) return;
  const QString found =
      QFileDialog::getOpenFileName(&window, "Data of the session", QFileInfo(path).path(), scanFilter);
  if (!found.isEmpty()) loader.useData(found);
}

void Files::open(QString const& path, ReadOptions const& options)
{
  if (!mayReplace()) return;
  cancel();
  if (isSessionFile(path))
    loader.open(path);
  else
    reader.start(path, options);
}

void Files::openExample()
{
  if (!mayReplace()) return;
  cancel();
  reader.startExample();
}

void Files::reread()
{
  if (!document.isOpen() || document.source().path.empty()) return;
  cancel();
  origin = Origin::Reread;
  loader.reread([this](Session& shown) {
    unsaved = !document.undoStack().isClean();
    hadSteps = document.undoStack().count() > 0;
    view.keep(shown);
  });
}

void Files::cancel()
{
  origin = Origin::File;
  reader.cancel();
  loader.opening().cancel();
}

void Files::recover(RecoverableSession const& crashed)
{
  try {
    const Session found = readSession(crashed.path);
    cancel();
    origin = Origin::Crash;
    left = crashed.path;
    loader.open(found, crashed.data);
  } catch (std::exception const& error) {
    ErrorDialog::tell(&window, "The session could not be recovered", QString::fromUtf8(error.what()));
  }
}

QString Files::title() const
{
  return document.isOpen() ? name : QString();
}

QString Files::folder() const
{
  if (!document.isOpen()) return {};
  const QString file = session.isEmpty() ? QFile::decodeName(document.source().path.c_str()) : session;
  return file.isEmpty() ? QString() : QFileInfo(file).absoluteDir().dirName();
}

void Files::chooseFile()
{
  const QString path =
      QFileDialog::getOpenFileName(&window, "Open a scan or a session", QString(), scanFilter);
  if (!path.isEmpty()) open(path);
}

void Files::chooseFolder()
{
  const QString path = QFileDialog::getExistingDirectory(&window, "Open a folder with a file per run");
  if (!path.isEmpty()) open(path);
}

} // namespace runsieve::app
