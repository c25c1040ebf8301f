#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"
#include "app/store/StoredPlot.h"

#include <QString>

#include <functional>

class QWidget;

namespace runsieve::app {

/// The open scan as a plot: the first output on show, the passing runs selected, the gates that are on. What
/// it is made of is taken at once; the plot is made when the result is called, in any thread.
[[nodiscard]] std::function<StoredPlot()> plotOf(Document const& document);

/// Makes plots of the open scan beside the interface.
class Plots : public QObject
{
  Q_OBJECT

public:
  /// \param window below which dialogs and other windows stand
  Plots(Document const& document, QWidget& window);

  /// Opens the composite view of the scan in a window of its own, as it is now. \param path of the scan, for
  /// the title
  void showComposite(QString const& path);
  /// Asks for a file and stores the scan with its selection there.
  void save();
  void write(QString const& path);
  [[nodiscard]] bool isBusy() const { return showing.isBusy() || writing.isBusy(); }

Q_SIGNALS:
  void told(QString const& text);

private:
  Document const& document;
  QWidget& window;
  Background showing;
  Background writing;
};

} // namespace runsieve::app
