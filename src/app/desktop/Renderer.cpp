#include "app/desktop/Renderer.h"

#include <QByteArray>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace tessaly {

namespace {

bool openGlRunsOnACard() {
  QOpenGLContext context;
  if (!context.create()) return false;
  QOffscreenSurface surface;
  surface.setFormat(context.format());
  surface.create();
  if (!surface.isValid() || !context.makeCurrent(&surface)) return false;
  const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
  const QByteArray renderer = QByteArray(name).toLower();
  context.doneCurrent();
  return !renderer.isEmpty() && !renderer.contains("llvmpipe") && !renderer.contains("softpipe") &&
         !renderer.contains("swrast");
}

}  // namespace

void chooseRenderer() {
  if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
    return;
  if (!openGlRunsOnACard()) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}  // namespace tessaly
