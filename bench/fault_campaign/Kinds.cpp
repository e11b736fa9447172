#include "fault_campaign/Kinds.h"

#include <algorithm>
#include <array>

namespace velmoor::campaign {
namespace {

constexpr std::array<FaultKindEntry, 32> kKinds{{
    {"byte lost on its way out", Means::noise, "drop-byte in", false, false},
    {"byte lost on its way in", Means::noise, "drop-byte out", false, true},
    {"bit turned on its way out", Means::noise, "damage-byte in", false, false},
    {"bit turned on its way in", Means::noise, "damage-byte out", false, false},
    {"two bits turned on their way out", Means::noise, "turn-byte in", false, false},
    {"two bits turned on their way in", Means::noise, "turn-byte out", false, true},
    {"byte twice on its way out", Means::noise, "double-byte in", false, false},
    {"byte twice on its way in", Means::noise, "double-byte out", false, true},
    {"line cut on its way out", Means::noise, "cut-line in", false, false},
    {"line cut on its way in", Means::noise, "cut-line out", false, false},
    {"line twice on its way out", Means::noise, "repeat-line in", false, false},
    {"line twice on its way in", Means::noise, "repeat-line out", false, false},
    {"bytes late", Means::noise, "delay-byte out delay=50", false, false},
    {"bytes too late on their way out", Means::noise, "delay-byte in late", false, false},
    {"bytes too late on their way in", Means::noise, "delay-byte out late", false, false},
    {"one line unheard", Means::fault, "silence count=1", false, false},
    {"silence", Means::fault, "silence count=0", true, false},
    {"one answer missing", Means::fault, "no-answer count=1", false, false},
    {"one answer too late", Means::fault, "late count=1 late", false, false},
    {"echo altered", Means::fault, "altered-echo count=1", false, false},
    {"half an answer", Means::fault, "half-line count=1", false, false},
    {"answer without its end", Means::fault, "no-line-end count=1", false, false},
    {"noise for an answer", Means::fault, "garbage count=1", false, false},
    {"answer without its value", Means::fault, "no-delimiter count=1", false, false},
    {"device error", Means::fault, "device-error count=1", false, false},
    {"refusal without a number", Means::fault, "junk-error count=1", false, false},
    {"alarm for an answer", Means::fault, "alarm-answer count=1", false, false},
    {"not good for an answer", Means::fault, "ng count=1", false, false},
    {"restart in place of the line", Means::fault, "restart count=1", false, false},
    {"line hung up", Means::event, "unplug", true, false},
    {"amplifier restarted", Means::event, "power", false, false},
    {"amplifier at another speed", Means::event, "speed", true, false},
}};

constexpr std::array<FaultKindEntry, 5> kWriteKinds{{
    {"not good for an answer", Means::fault, "ng count=1", false, false},
    {"noise for an answer", Means::fault, "garbage count=1", false, false},
    {"value for an acknowledge", Means::fault, "value-answer count=1", false, false},
    {"restart in place of the line", Means::fault, "restart count=1", false, false},
    {"line hung up at the line", Means::fault, "hang-up count=1", true, false},
}};

constexpr std::array<Transfer, 15> kTransfers{{
    {"mnuToolsDownloadNew", false, 40, true, true, "Download New complete!"},
    {"mnuToolsDownloadAll", false, 8, true, true, "Download All complete!"},
    {"mnuToolsDownloadParametersAll", false, 3, false, true, "complete!"},
    {"mnuToolsDownloadParameterTuning", false, 3, false, true, "complete!"},
    {"mnuToolsDownloadParameterHoming", false, 3, false, true, "complete!"},
    {"mnuToolsDownloadParameterOverTravel", false, 3, false, true, "complete!"},
    {"mnuToolsDownloadTablesAll", false, 3, true, false, "complete!"},
    {"mnuToolsDownloadTableJog", false, 5, true, false, "complete!"},
    {"mnuToolsDownloadTableZone", false, 5, true, false, "complete!"},
    {"mnuToolsUploadAll", true, 8, true, true, "Commit uploaded data"},
    {"mnuToolsUploadParametersAll", true, 4, false, true, "Commit uploaded data"},
    {"mnuToolsUploadParameterTuning", true, 3, false, true, "Commit uploaded data"},
    {"mnuToolsUploadTablesAll", true, 3, true, false, "Commit uploaded data"},
    {"mnuToolsUploadTableJog", true, 5, true, false, "Commit uploaded data"},
    {"mnuToolsUploadTableZone", true, 4, true, false, "Commit uploaded data"},
}};

}  // namespace

std::span<const FaultKindEntry> FaultKinds() {
  return kKinds;
}

std::span<const Transfer> Transfers() {
  return kTransfers;
}

std::span<const FaultKindEntry> WriteFaultKinds() {
  return kWriteKinds;
}

const Transfer& TransferOf(std::string_view command) {
  return *std::ranges::find_if(kTransfers,
                               [command](const Transfer& each) { return each.command == command; });
}

}  // namespace velmoor::campaign
