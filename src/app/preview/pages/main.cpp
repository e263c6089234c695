// Reads one file of a foreign format for a preview: see ReaderRequest.h and ReaderAnswer.h. It is
// started ahead of the request, and initialises its libraries then.
#include <cstdlib>
#include <optional>
#include <string>
#include <unistd.h>

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>

#include "app/preview/ReaderRequest.h"
#include "app/preview/pages/AnswerWriter.h"
#include "app/preview/pages/Confinement.h"
#include "app/preview/pages/FileAnswer.h"
#include "app/preview/pages/ImageReader.h"

int main(int, char** arguments) {
  using namespace tessaly;
  Confinement::limitResources();
  const int answer = Confinement::takeAnswer();
  if (answer < 0) return EXIT_FAILURE;
  // No desktop or display is needed.
  ::unsetenv("QT_QPA_PLATFORMTHEME");
  ::unsetenv("QT_IM_MODULE");
  std::string option = "-platform";
  std::string platform = "offscreen";
  char* all[] = {arguments[0], option.data(), platform.data(), nullptr};
  int count = 3;
  const QGuiApplication application(count, all);
  ImageReader::limitAllocation();
  // Loads the plugins for image formats.
  QImageReader::supportedImageFormats();

  const std::optional<std::string> bytes = Confinement::awaitRequest();
  const std::optional<ReaderRequest> request =
      bytes ? ReaderRequest::decoded(*bytes) : std::nullopt;
  if (!request) ::_exit(EXIT_SUCCESS);
  Confinement::endWithRequest(request->limits.seconds);
  QFile out;
  if (!out.open(answer, QIODevice::WriteOnly | QIODevice::Unbuffered)) ::_exit(EXIT_FAILURE);
  AnswerWriter writer(out);
  FileAnswer::write(*request, writer);
  // Everything is written; the system frees what libraries have left.
  ::_exit(EXIT_SUCCESS);
}
