#pragma once

#include <QDialog>
#include <QString>

namespace runsieve::app {

/// What went wrong, for people.
struct ErrorText
{
  QString summary; ///< "The scan could not be opened"
  QString message; ///< what was wrong, as it was told
  QString advice;  ///< what to do about it; may be empty
};

/// What a file was to be touched for.
enum class FileUse
{
  Reading,
  Writing
};

/// What helps against an error of some kind, by its message; empty if nothing is known.
[[nodiscard]] QString adviceOn(QString const& message, FileUse use = FileUse::Reading);

/// Tells of an error, with advice and a button that copies the details. All texts are plain.
class ErrorDialog : public QDialog
{
  Q_OBJECT

public:
  explicit ErrorDialog(ErrorText const& text, QWidget* parent = nullptr);

  /// What the button copies: all texts and the version of the program.
  [[nodiscard]] QString details() const { return copied; }

  /// Shows a dialog until it is closed. Advice is added if there is some.
  static void tell(QWidget* parent, QString const& summary, QString const& message,
                   FileUse use = FileUse::Reading);

private:
  QString copied;
};

} // namespace runsieve::app
