// Why a file cannot be shown, as texts for the user. Pure, safe from any thread.
#pragma once

#include "app/preview/PreviewContent.h"
#include "platform/SystemError.h"

namespace tessaly::PreviewFailures {

// The system refused access. `isFolder` is false if it is unknown.
PreviewFailure of(const SystemError& error, bool isFolder);

PreviewFailure damagedImage();
PreviewFailure hugeImage();
PreviewFailure unshownImage();  // not the file's fault
PreviewFailure damagedDocument();
PreviewFailure hugeDocument();
PreviewFailure unshownDocument();  // not the file's fault
PreviewFailure lockedDocument();   // needs a password
PreviewFailure foreignDocument();  // has an unknown encryption
PreviewFailure damagedMedia();
PreviewFailure unreadMedia();  // not the file's fault

}  // namespace tessaly::PreviewFailures
