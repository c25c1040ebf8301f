#include "app/render/OffscreenView.h"

#include "app/render/SavePicture.h"

#include <runsieve/items/VtkVersion.h>

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <vtkCallbackCommand.h>
#include <vtkContextScene.h>
#include <vtkContextView.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkNew.h>
#include <vtkOutputWindow.h>
#include <vtkRenderer.h>

#include <cstring>
#include <stdexcept>

namespace runsieve::app {

/// The EGL display and context, current in this thread as long as the object lives.
class OffscreenView::Context
{
public:
  Context()
  {
    auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay)
      display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY) display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr))
      throw std::runtime_error("cannot render without a window: no EGL display");
    makeContext();
    if (context == EGL_NO_CONTEXT || !eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
      eglTerminate(display);
      throw std::runtime_error("cannot render without a window: no OpenGL 3.2 context");
    }
  }

  ~Context()
  {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
    eglTerminate(display);
  }

  Context(Context const&) = delete;
  Context& operator=(Context const&) = delete;

private:
  void makeContext()
  {
    const EGLint wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 2, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglBindAPI(EGL_OPENGL_API) || !eglChooseConfig(display, wanted, &config, 1, &count)) return;
    context = eglCreateContext(display, count > 0 ? config : nullptr, EGL_NO_CONTEXT, version);
  }

  EGLDisplay display = EGL_NO_DISPLAY;
  EGLContext context = EGL_NO_CONTEXT;
};

namespace {

/// VTK reports that GLEW could not be initialised whenever there is no X display, although all functions are
/// loaded.
void dropGlewComplaint(vtkObject*, unsigned long, void*, void* text)
{
  auto const* message = static_cast<const char*>(text);
  if (message && !std::strstr(message, "GLEW could not be initialized"))
    vtkOutputWindow::GetInstance()->DisplayErrorText(message);
}

} // namespace

OffscreenView::OffscreenView(int width, int height, int samples) : context(std::make_unique<Context>())
{
  vtkNew<vtkGenericOpenGLRenderWindow> window;
  vtkNew<vtkCallbackCommand> complaints;
  complaints->SetCallback(dropGlewComplaint);
  window->AddObserver(vtkCommand::ErrorEvent, complaints);
  window->SetReadyForRendering(true);
  window->SetIsCurrent(true);
  window->SetMultiSamples(samples);
  window->SetSize(width, height);
  window->InitializeFromCurrentContext();
  view = vtkSmartPointer<vtkContextView>::New();
  makePrintable(view);
  view->SetRenderWindow(window);
  view->GetRenderer()->SetBackground(1.0, 1.0, 1.0);
}

OffscreenView::~OffscreenView()
{
  // The window frees its textures in the context, which must still be current.
  view->GetRenderWindow()->Finalize();
  view = nullptr;
}

vtkContextScene* OffscreenView::scene() const
{
  return view->GetScene();
}

void OffscreenView::render()
{
  view->Render();
}

std::string OffscreenView::save(std::string const& path)
{
  render();
  return savePicture(view->GetRenderWindow(), path);
}

} // namespace runsieve::app
