#include "app/explorer/document/Background.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>

#include <chrono>
#include <exception>
#include <thread>
#include <utility>

namespace runsieve::app {

/// A piece of work and its thread.
struct Background::Piece
{
  std::atomic<bool> cancelled = false;
  std::atomic<bool> superseded = false;
  std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
  std::thread thread;

  [[nodiscard]] bool isUnwanted() const
  {
    constexpr auto patience = std::chrono::milliseconds(120);
    return cancelled || (superseded && std::chrono::steady_clock::now() - start > patience);
  }
};

Background::Background(QObject* parent) : QObject(parent) {}

Background::~Background()
{
  next = nullptr;
  if (!running) return;
  running->cancelled = true;
  running->thread.join();
}

void Background::start(Work work)
{
  if (!running) {
    begin(std::move(work));
    return;
  }
  running->superseded = true;
  next = std::move(work);
}

void Background::cancel()
{
  next = nullptr;
  if (running) running->cancelled = true;
}

void Background::begin(Work work)
{
  auto piece = std::make_shared<Piece>();
  running = piece;
  // The thread ends before this object does, so what it posts always finds a receiver or is dropped by Qt.
  piece->thread = std::thread([this, piece, work = std::move(work)] {
    std::function<void()> done;
    try {
      done = work([piece] { return piece->isUnwanted(); });
    } catch (std::exception const& error) {
      // Kernels that are told to stop say so by an exception.
      if (!piece->isUnwanted())
        done = [this, message = QString::fromUtf8(error.what())] { Q_EMIT failed(message); };
    }
    QMetaObject::invokeMethod(
        this, [this, piece, done = std::move(done)] { finish(piece, done); }, Qt::QueuedConnection);
  });
  Q_EMIT busyChanged();
}

void Background::finish(std::shared_ptr<Piece> const& piece, std::function<void()> const& done)
{
  piece->thread.join();
  running.reset();
  if (next) begin(std::exchange(next, nullptr));
  const QPointer<Background> self(this); // who is told may delete this object
  if (done && !piece->cancelled) done();
  if (self && !running) Q_EMIT busyChanged();
}

void letEnd(std::unique_ptr<Background> work)
{
  if (!work->isBusy()) return;
  Background* alone = work.release();
  alone->setParent(QCoreApplication::instance());
  QObject::connect(alone, &Background::busyChanged, alone, [alone] {
    if (!alone->isBusy()) alone->deleteLater();
  });
  // Earlier than the application is gone, which texts are painted by.
  QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, alone,
                   [alone] { delete alone; });
}

} // namespace runsieve::app
