// What the engine may open for writing: files of this user that have one name, and nothing that a
// link leads to. A name beside a project can be taken by somebody else between two of our calls.
#pragma once

namespace velmoor::sqlcipher {

// From here on, for every database and journal of the process. A file that is refused is opened for
// reading alone, as the engine does with any that cannot be written.
void WriteOwnFilesAlone();

}  // namespace velmoor::sqlcipher
