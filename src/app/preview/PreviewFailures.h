// Why there is nothing to show, in words for the user. Pure, safe from any thread.
#pragma once

#include "app/preview/PreviewContent.h"
#include "platform/SystemError.h"

namespace tessaly::PreviewFailures {

// The system refused. `isFolder` is of the item, as far as it is known.
PreviewFailure of(const SystemError& error, bool isFolder);

PreviewFailure damagedImage();
PreviewFailure hugeImage();
PreviewFailure unshownImage();  // for no fault of its own
PreviewFailure damagedDocument();
PreviewFailure hugeDocument();
PreviewFailure unshownDocument();  // for no fault of its own
PreviewFailure lockedDocument();   // one that needs a password
PreviewFailure foreignDocument();  // one that is encrypted in a way that is not known here
PreviewFailure damagedMedia();
PreviewFailure unreadMedia();  // for no fault of its own

}  // namespace tessaly::PreviewFailures
