#include "simulator/FaultPlan.h"

#include <utility>

#include "simulator/NameTable.h"

namespace velmoor {
namespace {

constexpr std::pair<std::string_view, FaultKind> kNames[] = {
    {"silence", FaultKind::silence},          {"no-answer", FaultKind::noAnswer},
    {"late", FaultKind::lateAnswer},          {"altered-echo", FaultKind::alteredEcho},
    {"no-delimiter", FaultKind::noDelimiter}, {"ng", FaultKind::notGood},
    {"alarm-answer", FaultKind::alarmAnswer}, {"junk-error", FaultKind::junkError},
    {"zero-error", FaultKind::zeroError},     {"device-error", FaultKind::deviceError},
    {"wrong-answer", FaultKind::wrongAnswer}, {"no-line-end", FaultKind::noLineEnd},
    {"half-line", FaultKind::halfLine},       {"garbage", FaultKind::garbage},
    {"value-answer", FaultKind::valueAnswer}, {"unkept", FaultKind::unkept},
    {"restart", FaultKind::restart},          {"hang-up", FaultKind::hangUp}};

constexpr int kSpent = -1;  // in place of a count

}  // namespace

std::optional<Fault> FaultPlan::Take(std::string_view command) {
  std::optional<Fault> taken;
  for (Fault& fault : faults_) {
    if (!command.starts_with(fault.match)) continue;
    if (fault.skip > 0) {
      --fault.skip;
    } else if (!taken) {
      taken = fault;
      if (fault.count > 0 && --fault.count == 0) fault.count = kSpent;
    }
  }
  std::erase_if(faults_, [](const Fault& fault) { return fault.count == kSpent; });
  return taken;
}

std::optional<FaultKind> FaultKindOf(std::string_view name) {
  return ValueNamed(kNames, name);
}

std::string_view NameOf(FaultKind kind) {
  for (const auto& [name, known] : kNames) {
    if (known == kind) return name;
  }
  return {};
}

std::string FaultNames() {
  return NamesOf(kNames);
}

}  // namespace velmoor
