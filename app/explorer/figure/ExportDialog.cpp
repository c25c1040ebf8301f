#include "app/explorer/figure/ExportDialog.h"

#include "app/explorer/controls/PlainText.h"
#include "app/explorer/document/ReadFiles.h"
#include "app/explorer/figure/FigureData.h"
#include "app/explorer/figure/FigureForm.h"
#include "app/explorer/figure/FigurePreview.h"
#include "app/explorer/figure/FigureSettings.h"
#include "app/explorer/figure/WriteFigure.h"

#include <runsieve/core/scan/ScanError.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QUrl>
#include <QVBoxLayout>

#include <exception>
#include <utility>

namespace runsieve::app {

namespace {

QLabel* plainLabel()
{
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  return label;
}

FigureOptions begunOptions(ViewState const& looks)
{
  FigureOptions begun = lastFigureOptions();
  begun.runsLook = looks.runsLook;
  begun.parameterLook = looks.parameterLook;
  return begun;
}

} // namespace

ExportDialog::ExportDialog(FigureContent ofContent, ViewState const& looks, QWidget* parent)
    : QDialog(parent), content(std::move(ofContent))
{
  setWindowTitle("Export figure");
  options = new FigureForm(content, begunOptions(looks));
  auto* scroll = new QScrollArea;
  scroll->setWidget(options);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFixedWidth(options->sizeHint().width() + 24);
  shown = new FigurePreview(content);
  facts = plainLabel();
  told = plainLabel();
  opening = new QPushButton("Open folder");
  opening->setAutoDefault(false);
  opening->hide();
  auto* outcomeRow = new QHBoxLayout;
  outcomeRow->addWidget(told, 1);
  outcomeRow->addWidget(opening);
  auto* right = new QVBoxLayout;
  right->addWidget(shown, 1);
  right->addWidget(facts);
  right->addLayout(outcomeRow);
  auto* upper = new QHBoxLayout;
  upper->addWidget(scroll);
  upper->addLayout(right, 1);
  data = new QCheckBox("Also write the &data behind it as CSV");
  data->setToolTip("Runs, curves of the parameters, and the table of all parameters, beside the figure");
  auto* buttons = new QDialogButtonBox;
  saving = buttons->addButton("&Save...", QDialogButtonBox::ActionRole);
  auto* copying = buttons->addButton("&Copy to clipboard", QDialogButtonBox::ActionRole);
  auto* closing = buttons->addButton("C&lose", QDialogButtonBox::RejectRole);
  // Return saves, wherever the keys go.
  copying->setAutoDefault(false);
  closing->setAutoDefault(false);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(upper, 1);
  layout->addWidget(data);
  layout->addWidget(buttons);
  saving->setDefault(true);
  connect(options, &FigureForm::changed, this, &ExportDialog::follow);
  connect(shown, &FigurePreview::changed, this, [this](FigureNotes const& notes) {
    const FigureOptions now = options->options();
    const QSize pixels = figurePixels(now);
    QString text = QString::fromUtf8("%1 \u00d7 %2 mm; as PNG %3 \u00d7 %4 pixels")
                       .arg(now.width)
                       .arg(now.height)
                       .arg(pixels.width())
                       .arg(pixels.height());
    if (now.dpi > finestDpi(now)) text += QString(", too many: %1 dpi are the most").arg(finestDpi(now));
    if (notes.parametersShown < notes.parametersAsked)
      text += QString("; room for %1 of %2 parameters").arg(notes.parametersShown).arg(notes.parametersAsked);
    if (now.legend && !notes.legendShown) text += "; no room for the legend";
    facts->setText(text);
  });
  connect(saving, &QPushButton::clicked, this, &ExportDialog::ask);
  connect(copying, &QPushButton::clicked, this, &ExportDialog::copy);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(opening, &QPushButton::clicked, this,
          [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(written).absolutePath())); });
  connect(work.get(), &Background::failed, this, &ExportDialog::tell);
  connect(work.get(), &Background::busyChanged, this, [this] { saving->setEnabled(!work->isBusy()); });
  constexpr double part = 0.9; // of a screen, whose scale factor may leave little; frames take some of it
  resize(QSize(980, 640).boundedTo((parent ? parent : this)->screen()->availableSize() * part));
  follow();
}

ExportDialog::~ExportDialog()
{
  work->disconnect(this);
  connect(work.get(), &Background::failed, qApp, [](QString const& message) {
    tellFailure(QApplication::activeWindow(), "The figure could not be written.", message);
  });
  letEnd(std::move(work));
}

void ExportDialog::follow()
{
  shown->show(options->options());
}

void ExportDialog::tell(QString const& text)
{
  opening->hide();
  told->setText(text);
}

QString ExportDialog::outcome() const
{
  return told->text();
}

void ExportDialog::setSource(ScanSource const& scan)
{
  source = scan;
}

bool ExportDialog::mayWrite(QString const& figure, QStringList const& others)
{
  QStringList existing;
  try {
    requireOtherFile(source, figure);
    for (QString const& path : others) {
      requireOtherFile(source, path);
      if (QFileInfo::exists(path)) existing << QFileInfo(path).fileName();
    }
  } catch (ScanError const& error) {
    tell(QString::fromUtf8(error.what()));
    return false;
  }
  if (existing.isEmpty()) return true;
  QMessageBox box(QMessageBox::Question, "Runsieve", QString(), QMessageBox::Yes | QMessageBox::Cancel, this);
  box.setTextFormat(Qt::PlainText);
  box.setText("These files exist. Do you want to replace them?");
  box.setInformativeText(toolTipText(existing.join('\n')));
  return box.exec() == QMessageBox::Yes;
}

void ExportDialog::ask()
{
  const QFileInfo scan(QFile::decodeName(source.path.c_str()));
  const QString path = QFileDialog::getSaveFileName(
      this, "Save figure", source.path.empty() ? QString("figure.pdf") : scan.absolutePath() + "/figure.pdf",
      "PDF (*.pdf);;SVG (*.svg);;PNG (*.png)");
  if (!path.isEmpty()) save(path);
}

void ExportDialog::save(QString const& asked)
{
  const bool completed = QFileInfo(asked).suffix().isEmpty();
  const QString path = completed ? asked + ".pdf" : asked;
  const FigureOptions now = options->options();
  QStringList unasked = data->isChecked() ? figureDataFiles(content, now, path) : QStringList();
  if (completed) unasked.prepend(path); // who was asked was asked for another name
  if (!mayWrite(path, unasked)) return;
  keepFigureOptions(now);
  tell(QString("Writing %1 ...").arg(QFileInfo(path).fileName()));
  work->start([self = QPointer<ExportDialog>(this), content = content, now, path,
               withData = data->isChecked()](Background::Cancelled const&) -> std::function<void()> {
    const FigureBytes made = writeFigure(content, now, path);
    const QStringList files = withData ? writeFigureData(content, now, path) : QStringList();
    return [self, path, files, bytes = made.bytes.size()] {
      if (!self) return;
      QString text =
          QString("%1 is written, %2 kB").arg(QFileInfo(path).fileName()).arg((bytes + 999) / 1000);
      for (QString const& file : files) text += ", " + QFileInfo(file).fileName();
      self->tell(text);
      self->written = path;
      self->opening->setVisible(true);
      Q_EMIT self->saved(path);
    };
  });
}

void ExportDialog::copy()
{
  const FigureOptions now = withinLimits(options->options());
  if (const QString fault = tooManyPixels(now); !fault.isEmpty()) {
    tell("The figure cannot be copied: " + fault + '.');
    return;
  }
  keepFigureOptions(now);
  tell("Copying ...");
  work->start([self = QPointer<ExportDialog>(this), content = content,
               now](Background::Cancelled const&) -> std::function<void()> {
    const QImage image = figureImage(content, now, now.dpi / figureUnitsPerInch);
    return [self, image] {
      QApplication::clipboard()->setImage(image);
      if (self) self->tell("The figure is on the clipboard.");
    };
  });
}

} // namespace runsieve::app
