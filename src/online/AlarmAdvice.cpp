#include "online/AlarmAdvice.h"

#include <algorithm>
#include <array>

namespace velmoor {
namespace {

constexpr auto kAdvice = std::to_array<AlarmAdvice>({
    {"A.01", "The parameters' memory lost its contents, by a power cut while it was written.",
     "Reset the parameters, then download the project."},
    {"A.02", "A parameter is outside of the limits of this amplifier or motor.",
     "Compare the project with the amplifier, and download what differs."},
    {"A.03", "The motion programme's memory lost its contents.",
     "Reset the tables, then download them."},
    {"A.04", "The amplifier's processor has stopped.",
     "Switch off and on; if it stays, replace it."},
    {"A.05", "The motor is of a power that this amplifier cannot drive.",
     "Check both type plates and the encoder's cable."},
    {"A.06", "The encoder names a motor that the amplifier does not know.",
     "Check the motor's type plate and the encoder's cable."},
    {"A.07", "The amplifier failed its own test as it started.",
     "Switch off and on; replace it if it stays."},
    {"A.10",
     "Too much current flowed: a short circuit in the motor or its cable, or far too stiff "
     "gains.",
     "Take the motor cable off and try again; check its insulation; lower the gains."},
    {"A.11", "A phase of the motor or its cable touches earth.",
     "Measure the motor and its cable against earth."},
    {"A.12", "The amplifier does not measure the motor's current right.",
     "Switch off and on; replace it if it stays."},
    {"A.13", "The power stage is too hot: too much load, or too little air.",
     "Clean the fan and the cabinet's filter; let the programme rest longer between moves."},
    {"A.20", "The main supply was too low, or failed while the motor ran.",
     "Check fuses, contactor and the supply's voltage under load."},
    {"A.21", "The bus voltage rose too high, mostly by braking a large mass.",
     "Brake more slowly, or add a regeneration resistor; check the supply's voltage."},
    {"A.22", "A phase of the main supply is missing.", "Check fuses and the contactor."},
    {"A.23", "The supply of the control is too low.", "Measure the control supply."},
    {"A.30", "The regeneration resistor or its switch is faulty.",
     "Check the resistor's wires and its value."},
    {"A.31", "More energy comes back while braking than the resistor takes.",
     "Brake more slowly or less often, or use a larger resistor."},
    {"A.32", "The dynamic brake has stopped too much energy, too often.",
     "Let the motor come to rest before the servo goes off."},
    {"A.40",
     "The motor turned faster than its limit: a wrong gear ratio or speed, or strong "
     "overshoot.",
     "Check the electronic gear and the speeds of the steps; lower the gains."},
    {"A.41", "The motor runs where it was not sent: phases swapped, or the encoder faulty.",
     "Check the order of the motor's wires and the encoder's cable. Do not switch on again "
     "before."},
    {"A.42", "The axis vibrates strongly.", "Lower the gains, or set the notch filter."},
    {"A.43",
     "Far more torque than the motor's rating for a short time: something holds the axis, or "
     "it speeds up too fast.",
     "Look for what blocks the axis, and whether the brake opens; speed up more slowly."},
    {"A.44",
     "More torque than the motor's rating for a long time: friction, load or cycle are too "
     "much.",
     "Look at the mean torque of a cycle; rest longer, move slower, or use a larger motor."},
    {"A.45", "The motor is too hot.", "Let it cool; look at the mean torque of a cycle."},
    {"A.46", "The heat sink is too hot.", "Clean the fan; cool the cabinet."},
    {"A.47", "The fan stands still.", "Replace the fan."},
    {"A.50", "The motor did not follow: it is blocked, too weak, or was sent too fast.",
     "Look for what blocks the axis; look at the torque before the alarm; lower acceleration or "
     "speed, or raise the gains."},
    {"A.51", "The axis was moved by hand or load while the servo was off.",
     "Reset the alarm with the axis at rest, then switch the servo on."},
    {"A.52", "A command is more than the amplifier can count.",
     "Check the electronic gear and the distances of the steps."},
    {"A.53", "Motor and external encoder tell different positions: a slipping coupling or belt.",
     "Check coupling, belt and the external encoder."},
    {"A.54", "The limit of the turn counter differs between amplifier and encoder.",
     "Set the encoder up again."},
    {"A.60", "The encoder's cable is not connected.", "Check the plugs of the encoder's cable."},
    {"A.61", "The encoder does not answer.", "Check the encoder's cable, then its supply."},
    {"A.62", "The encoder's answers are disturbed.",
     "Keep its cable away from power cables; connect the shield at both ends."},
    {"A.63", "The encoder's memory is faulty.", "Replace the motor."},
    {"A.64", "The encoder is too hot.", "Let the motor cool; reduce the load."},
    {"A.65", "The encoder's battery is empty: its position is lost.",
     "Replace the battery, reset the absolute encoder, and home the axis."},
    {"A.66", "The encoder lost its position.", "Reset the absolute encoder, and home the axis."},
    {"A.67", "The encoder's zero pulse did not come.", "Check the encoder's cable."},
    {"A.70", "The motor's cable is not connected.", "Check the motor's plug and wires."},
    {"A.71", "The holding brake does not open or close.", "Check the brake's supply and relay."},
    {"A.80", "Both end switches are open: a broken wire or a missing supply.",
     "Check the end switches' wires, P-OT and N-OT."},
    {"A.E0", "The indexer card is missing.", "Push the card in with the power off."},
    {"A.E1", "The indexer card starts up.", "Wait for some seconds."},
    {"A.E2", "The indexer card does not answer.",
     "Switch off and on; replace the card if it stays."},
    {"A.E7", "The card was changed for another.", "Reset the alarm, and download the project."},
    {"A.EF", "The indexer card is faulty.", "Switch off and on; replace the card if it stays."},
});

}  // namespace

const AlarmAdvice* AdviceOn(std::string_view display) {
  const auto* const found = std::ranges::find(kAdvice, display, &AlarmAdvice::display);
  return found == kAdvice.end() ? nullptr : found;
}

}  // namespace velmoor
