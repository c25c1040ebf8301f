#include <runsieve/widgets/HandFrames.h>

#include <vtkCommand.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>

#include <QObject>

#include <utility>

namespace runsieve {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A hand that has made no step for that long rests.
constexpr milliseconds untilRest(100);

/// In which nothing but counting is done: less than a hand notices.
constexpr milliseconds slice(15);

/// Between two frames while runs are counted.
constexpr milliseconds betweenFrames(250);

} // namespace

HandFrames::HandFrames(vtkRenderWindow* window, vtkRenderWindowInteractor* itsInteractor,
                       std::function<void()> itsRender)
    : render(std::move(itsRender)), images(window), interactor(itsInteractor)
{
  restTimer.setSingleShot(true);
  restTimer.setInterval(untilRest);
  countTimer.setInterval(0);
  QObject::connect(&restTimer, &QTimer::timeout, &restTimer, [this] { rest(); });
  QObject::connect(&countTimer, &QTimer::timeout, &countTimer, [this] { count(); });
  // Charts draw on a timer after their events, between these two.
  observers[0] = interactor->AddObserver(vtkCommand::TimerEvent, this, &HandFrames::beginTimerEvent, 1.0f);
  observers[1] = interactor->AddObserver(vtkCommand::TimerEvent, this, &HandFrames::endTimerEvent, -1.0f);
}

HandFrames::~HandFrames()
{
  for (unsigned long observer : observers) interactor->RemoveObserver(observer);
}

void HandFrames::move()
{
  state = State::moving;
  countTimer.stop();
  restTimer.start();
}

void HandFrames::rest()
{
  if (state != State::moving) return;
  restTimer.stop();
  state = State::counting;
  nextFrame = steady_clock::now();
  countTimer.start();
}

void HandFrames::end()
{
  state = State::exact;
  restTimer.stop();
  countTimer.stop();
  forbid();
}

void HandFrames::count()
{
  if (!images.areShown()) {
    end();
    return;
  }
  if (images.count(slice)) {
    end();
    render();
    return;
  }
  if (steady_clock::now() < nextFrame) return;
  const Allowed allowed(*this);
  render();
  nextFrame = steady_clock::now() + betweenFrames;
}

void HandFrames::allow()
{
  if (state == State::exact) return;
  frame.reset();
  const bool moves = state == State::moving;
  frame = std::make_unique<MovedImages::Frame>(images,
                                               moves ? MovedImages::Hand::moves : MovedImages::Hand::rests);
}

void HandFrames::forbid()
{
  frame.reset();
}

} // namespace runsieve
