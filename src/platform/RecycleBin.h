// The place where the desktop keeps deleted files until they are deleted for good.
#pragma once

namespace platform {

// Deletes for good whatever the user has in it, on all volumes, without asking. Thread: any; blocks.
//
// Windows: what the shell says, also about a bin that is empty already.
// Elsewhere: the desktop's trash, in the home and on every mounted volume. True when nothing is left in it, also
// when there was nothing. False when something could not be deleted, and when the trash in the home is not a folder of
// this user (a link, say): then it is not touched. On a volume such a folder is passed over and no failure.
bool emptyRecycleBin();

} // namespace platform
