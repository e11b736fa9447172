// The stages of an upload of everything, with what the user is told and asked on the way.
#pragma once

namespace velmoor {

class clsHX7Project;

// What the user is told when the machine's stage does not bring a machine that can be used.
inline constexpr const char* kCheckSumFailedWords =
    "The mechanical system data used to calculate the electronic gear ratio was not available and "
    "could not be uploaded.\rPlease check the data in the mechanical system window.";
inline constexpr const char* kNoCheckSumWords =
    "There is no mechanical system data stored in the controller!\r"
    "Previous mechanical system project values have been restored.";
inline constexpr const char* kZeroSystemWords =
    "One or more mechanical system data (N1, N2, or measure value) stored in the controller is "
    "zero!\rImproper mechanical system data!\r"
    "Previous mechanical system project values have been restored.";

// Reads the machine, all parameters and the three tables from the amplifier, in that order, into
// what the project holds apart. False: stopped or failed, of which the user was told; nothing is
// held apart then.
[[nodiscard]] bool RunUploadStages(clsHX7Project& project);

// Asks whether the uploaded data is to be committed. Yes commits it into all tools; No drops it.
// True: it was committed.
bool AskToCommitUpload(clsHX7Project& project);

}  // namespace velmoor
