#pragma once

#include "app/explorer/document/Background.h"
#include "app/explorer/document/Document.h"

#include <QObject>

#include <functional>
#include <memory>

namespace runsieve::app {

/// Long work on the passing runs, beside the interface: only while somebody looks, and again when the passing
/// runs or the method have changed.
class PassingWork : public QObject
{
  Q_OBJECT

public:
  /// What is worked on.
  struct Task
  {
    std::shared_ptr<Scan const> scan;
    RunSet passing;
    RunSet eligible;
    ComparisonMethod method;
    std::shared_ptr<Comparison const> comparison; ///< of these runs by this method, a copy
  };
  /// Runs in another thread; may throw ComparisonCancelled. \return what is to be done in the thread of the
  /// interface
  using Compute = std::function<std::function<void()>(Task const& task, ComparisonWork const& work)>;

  enum class Stage
  {
    NoGate,  ///< nothing is sieved
    NoRuns,  ///< one side has no runs
    Waiting, ///< for passing runs that stay, or for somebody to look
    Working,
    Done,
    Stopped ///< by the user, or by a fault
  };

  /// \param forget is called when a former result is of no use any more
  PassingWork(Document& document, Compute compute, std::function<void()> forget, QObject* parent = nullptr);
  ~PassingWork() override;

  /// Whether somebody looks.
  void setWanted(bool wanted);
  [[nodiscard]] Stage stage() const;
  /// Why it has stopped; empty if the user has stopped it.
  [[nodiscard]] QString const& fault() const { return message; }

  void stop();
  void startAgain();

Q_SIGNALS:
  void changed();

private:
  void follow();
  void begin();
  [[nodiscard]] bool hasBothSides() const;

  Document& document;
  Compute compute;
  std::function<void()> forget;
  bool wanted = false;
  bool isOutdated = true;
  bool isStopped = false;
  bool isDone = false;
  QString message;
  Comparison const* seen = nullptr; ///< of the runs that are worked on; compared, never read
  Background work;
};

} // namespace runsieve::app
