#include <string>

#include "Target.h"
#include "scan/FileKindRules.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const std::string_view extension = FileKindRules::pathExtension(input);
  require(extension.find_first_of("./") == std::string_view::npos,
          "an extension has neither a dot nor a slash");
  require(extension.empty() || extension.data() + extension.size() == input.data() + input.size(),
          "an extension is the end of a name");

  const FileKind folder = FileKindRules::classify(input, true);
  require(folder == FileKind::folder || folder == FileKind::app, "a folder is a folder or an app");
  const FileKind file = FileKindRules::classify(input, false);
  require(file != FileKind::folder, "a file is no folder");

  std::string loud(input);
  for (char& c : loud) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  require(FileKindRules::classify(loud, false) == file, "capitals do not matter");
  require(FileKindRules::classify("folder.zip/" + loud, false) == file,
          "the way to a file does not matter");
}

}  // namespace tessaly::fuzz
