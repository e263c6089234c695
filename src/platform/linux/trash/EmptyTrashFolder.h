// Empties one folder of a Trash after the freedesktop.org Trash specification 1.0.
//
// Files, links and empty folders are deleted in one step, and then the record of where they came
// from. A folder with something in it takes many steps, so it is first moved, whole and in one
// step, into the folder "expunged" beside "files", where nobody looks for anything to be put back;
// then its record is deleted, and only then what is in it. So there are these states, wherever the
// program ends: the item in "files" is whole and has its record; or it is gone from "files", and
// its record may be there still, which then leads nowhere; or the record is gone too. Never is
// there something to be put back of which a part is missing, nor an item that has lost its record.
// What is left in "expunged", and records without an item, go with the next emptying.
#pragma once

#include "platform/TrashCan.h"
#include "platform/linux/trash/TrashListing.h"

namespace tessaly {

// Deletes what is in the listing. Each item and each record is looked at again right before: one
// that is not what was listed under its name stays, without an error. Others may empty the same
// Trash at the same time.
//
// An item stays, whole and with its record, where one can see beforehand that not all of it can be
// deleted, or where it cannot be moved. Nothing is done outside of the folder, and nothing on other
// mounts below it. The cache of sizes beside the items goes too, since it would tell of items that
// are gone. `user` owns the folders whose permissions may be opened.
void emptyTrashFolder(const TrashListing& listing, uid_t user, EmptiedTrash& result);

}  // namespace tessaly
