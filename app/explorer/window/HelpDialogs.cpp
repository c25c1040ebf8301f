#include "app/explorer/window/HelpDialogs.h"

#include "app/explorer/window/ActionTable.h"
#include "app/explorer/window/Icons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <vtkVersion.h>

/// A linker leaves out of a static library what nothing asks for, the guide as well. In no namespace, since
/// the macro declares a function of the global one.
static void linkGuide()
{
  Q_INIT_RESOURCE(help);
}

namespace runsieve::app {

namespace {

/// A text that stays open beside the work.
void showText(QWidget* parent, QString const& title, QString const& markdown)
{
  auto* dialog = new QDialog(parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(title);
  auto* text = new QTextBrowser;
  text->setMarkdown(markdown);
  text->setOpenExternalLinks(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
  auto* layout = new QVBoxLayout(dialog);
  layout->addWidget(text);
  layout->addWidget(buttons);
  dialog->resize(680, 620);
  dialog->show();
}

QString keysOf(ActionEntry const& entry)
{
  QStringList keys;
  for (QString const& key : QString(entry.shortcut).split("; "))
    if (!key.isEmpty())
      keys << QKeySequence::fromString(key, QKeySequence::PortableText).toString(QKeySequence::NativeText);
  return keys.join(", ");
}

} // namespace

void showKeys(QWidget* parent)
{
  QString text =
      "# Mouse in the charts of the runs\n\n"
      "| do | effect |\n|---|---|\n"
      "| drag with the left button | what the tool says: draw gates, pan, zoom into a rectangle |\n"
      "| drag with the right button | draw a gate |\n"
      "| drag with Shift | draw a gate that runs must not pass |\n"
      "| drag a gate, or its sides | move it, or change it |\n"
      "| drag with the middle button | pan |\n"
      "| wheel | zoom; over an axis, or with Ctrl or Shift, in one direction |\n"
      "| click on a run | pin it, or free it |\n"
      "| double click | show everything |\n"
      "| Esc | give a drag up |\n"
      "| 0, +, -, arrows | show everything, zoom, move |\n\n";
  QString menu;
  for (ActionEntry const& entry : actionTable()) {
    if (menu != entry.menu) {
      menu = entry.menu;
      text +=
          QString("\n\n# %1\n\n| command | keys | does |\n|---|---|---|\n").arg(QString(menu).remove('&'));
    }
    text += QString("| %1 | %2 | %3 |\n")
                .arg(QString(entry.text).remove('&').remove("..."), keysOf(entry), entry.hint);
  }
  showText(parent, "Keys and mouse", text);
}

void showGuide(QWidget* parent)
{
  linkGuide();
  QFile file(":/help/guide.md");
  if (file.open(QIODevice::ReadOnly)) showText(parent, "User guide", QString::fromUtf8(file.readAll()));
}

void showAbout(QWidget* parent)
{
  QMessageBox box(parent);
  box.setWindowTitle("About Runsieve");
  constexpr int iconSize = 64;
  box.setIconPixmap(programIcon().pixmap(iconSize, iconSize));
  box.setText("<h3>Runsieve " RUNSIEVE_VERSION "</h3>Which parameters made these runs different?");
  box.setInformativeText(
      QString("Qt %1, VTK %2, built with %3").arg(qVersion(), vtkVersion::GetVTKVersion(), __VERSION__));
  box.exec();
}

} // namespace runsieve::app
