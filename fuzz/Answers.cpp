// Answer lines: every reader of what an amplifier says, but the uploads.

#include "ProgramSession.h"
#include "Target.h"
#include "online/AlarmReadings.h"

namespace velmoor::fuzz {
namespace {

void ReadIdentity(clsHX7Helix7& helix) {
  std::string text;
  std::int32_t number = 0;
  (void)helix.IsRX900AndVKLM();
  (void)helix.GetServoModel(text);
  (void)helix.GetMotorModel(text);
  (void)helix.GetOptionVersion(text);
  (void)helix.GetOptionYSpec(text);
  (void)helix.GetServoYSpec(text);
  (void)helix.GetEncoderResolution(number);
  (void)helix.GetEncoderResolutionBits(text);
  (void)helix.GetEncoderType(text);
  (void)helix.GetAxis("0");
}

void ReadValues(clsHX7Helix7& helix, unsigned selector) {
  std::int32_t number = 0;
  std::int16_t level = 0;
  std::string text;
  (void)helix.GetHelixValue(static_cast<std::int32_t>(selector) - 1, number);
  (void)helix.GetRigidity(level);
  (void)helix.GetInertiaRatio(number);
  (void)OpenedProject().GetReferenceSpeedFactor();
  (void)helix.SendToSerial("0X", text);
}

void ReadAlarms() {
  AlarmReading reading;
  std::vector<AlarmReading> readings;
  std::string error;
  (void)ReadAlarm(reading);
  (void)ReadAlarmHistory(readings);
  (void)ReadError(error);
  (void)gMainForm->Helix7()->GetAlarmAndError();
}

void Write(clsHX7Helix7& helix) {
  (void)helix.SetParameter("81D", "1200");
  (void)helix.writeZoneTable(3, {"1", "2"});
  (void)helix.StopJog();
}

}  // namespace
}  // namespace velmoor::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  using namespace velmoor::fuzz;
  static ProgramSession session("answers");
  std::string_view text = Text(data, size);
  const unsigned reader = Choose(text, 10);
  session.TakeAnswers(text);
  clsHX7Helix7& helix = *gMainForm->Helix7();
  helix.SetEcho(reader % 2 == 0);
  switch (reader / 2) {
    case 0:
      ReadIdentity(helix);
      break;
    case 1:
      ReadValues(helix, static_cast<unsigned>(text.size()) % 20);
      break;
    case 2:
      ReadAlarms();
      break;
    case 3:
      (void)helix.GoOnline(false);
      break;
    default:
      Write(helix);
      break;
  }
  return 0;
}
