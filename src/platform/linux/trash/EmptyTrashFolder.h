// Empties one folder of a Trash by the freedesktop.org Trash specification 1.0.
//
// Files, links and empty folders are deleted in one step, and then the record of their origin. A
// folder with contents takes many steps, so it is first moved as a whole, in one step, into the
// folder "expunged" beside "files", where no program looks for items to put back; then its record
// is deleted, and only then its contents. So if the program ends at any moment, an item is in one
// of these states: it is complete in "files" and has its record; or it is gone from "files", and
// its record may remain without effect; or the record is gone too. An item that can be put back is
// never incomplete and never without its record. Remains in "expunged", and records without an
// item, are deleted by the next emptying.
#pragma once

#include "platform/TrashCan.h"
#include "platform/linux/trash/TrashListing.h"

namespace tessaly {

// Deletes the contents of the listing. Each item and each record is checked again right before: one
// that is no longer the listed one stays, without an error. Other programs may empty the same Trash
// at the same time.
//
// An item stays, complete and with its record, if it is known in advance that not all of it can be
// deleted, or if it cannot be moved. Nothing is changed outside the folder or on other mounts below
// it. The cache of sizes beside the items is deleted too, since it would list deleted items. `user`
// owns the folders whose permissions may be opened.
void emptyTrashFolder(const TrashListing& listing, uid_t user, EmptiedTrash& result);

}  // namespace tessaly
