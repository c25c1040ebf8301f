#pragma once

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

namespace runsieve::app {

/// Work beside the interface, one piece at a time. Of pieces that wait only the newest is done; one that is
/// under way when another comes may end if it is short, so that a stream of pieces, as while something is
/// being dragged, still shows results.
class Background : public QObject
{
  Q_OBJECT

public:
  /// Whether the result is not wanted any more; may be asked from any thread.
  using Cancelled = std::function<bool()>;
  /// Runs in another thread. \return what is to be done with the result, in the thread of the interface; it
  /// may be empty, and is left out after cancel()
  using Work = std::function<std::function<void()>(Cancelled const& cancelled)>;

  explicit Background(QObject* parent = nullptr);
  /// Cancels, and waits for what is under way.
  ~Background() override;

  /// Begins a piece of work when the one under way, if any, has ended.
  void start(Work work);
  void cancel();
  [[nodiscard]] bool isBusy() const { return running != nullptr; }

Q_SIGNALS:
  void busyChanged();
  /// The work threw an exception, which says this, while its result was wanted.
  void failed(QString const& message);

private:
  struct Piece;

  void begin(Work work);
  void finish(std::shared_ptr<Piece> const& piece, std::function<void()> const& done);

  std::shared_ptr<Piece> running;
  Work next; ///< waits; empty if none does
};

/// Gives work away that its owner does not wait for: what is under way ends by itself, and what cancel() has
/// left out is dropped. A program that quits waits for it.
void letEnd(std::unique_ptr<Background> work);

} // namespace runsieve::app
