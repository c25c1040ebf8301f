#pragma once

#include "app/explorer/document/Document.h"
#include "app/explorer/figure/FigureContent.h"
#include "app/explorer/figure/FigureOptions.h"

#include <QDialog>
#include <QString>

#include <memory>

class QCheckBox;
class QLabel;
class QPushButton;

namespace runsieve::app {

class FigureForm;
class FigurePreview;

/// Makes a figure of what is shown: options, a preview that follows them, and a file or the clipboard. The
/// file is written beside the interface, to its end if the dialog is closed meanwhile.
class ExportDialog : public QDialog
{
  Q_OBJECT

public:
  /// Begins with the options of the last figure. \param looks how runs and parameters are shown at the moment
  ExportDialog(FigureContent content, ViewState const& looks, QWidget* parent = nullptr);
  ~ExportDialog() override;

  [[nodiscard]] FigureForm& form() { return *options; }
  [[nodiscard]] FigurePreview& preview() { return *shown; }
  /// What the figure is of: files are looked for beside it first, and it is never written over.
  void setSource(ScanSource const& scan);

  /// Writes the figure, and the data behind it if that is wished for; asks before files of such data are
  /// replaced. Without an ending it becomes a PDF.
  void save(QString const& path);
  /// Puts the figure on the clipboard, in pixels.
  void copy();
  /// What was done last, or went wrong.
  [[nodiscard]] QString outcome() const;

Q_SIGNALS:
  /// A figure has been written.
  void saved(QString const& path);

private:
  void ask();
  void follow();
  /// Whether files may be written, by the user if they exist.
  [[nodiscard]] bool mayWrite(QString const& figure, QStringList const& others);
  void tell(QString const& text);

  FigureContent content;
  FigureForm* options = nullptr;
  FigurePreview* shown = nullptr;
  QCheckBox* data = nullptr;
  QLabel* facts = nullptr;
  QLabel* told = nullptr;
  QPushButton* opening = nullptr; ///< of the folder; hidden until something is written
  QPushButton* saving = nullptr;
  ScanSource source;
  QString written;
  std::unique_ptr<Background> work = std::make_unique<Background>();
};

} // namespace runsieve::app
