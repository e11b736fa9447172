// The stages of an upload of everything, with what the user is told and asked on the way. Shared by
// the main window and the console program.
#pragma once

namespace velmoor {

class clsHX7Project;

// Takes a snapshot and reads the machine, all parameters and the three tables from the amplifier,
// in that order. False: stopped or failed, of which the user was told; what was read stays in
// memory.
[[nodiscard]] bool RunUploadStages(clsHX7Project& project);

// Asks whether the uploaded data is to be committed. Yes commits it into all tools; No puts back
// what the project held before the upload.
void AskToCommitUpload(clsHX7Project& project);

}  // namespace velmoor
