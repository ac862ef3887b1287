#pragma once

#include <string_view>

#include "model/measurement_block.h"

/// Titles, captions and help texts of the calculator windows.
namespace calculators {

namespace title {
inline constexpr std::string_view twoPoint = "Volt/Volt X-Y Calculator";
inline constexpr std::string_view twoPointOfFft = "FFT Multiplier Calculator";
inline constexpr std::string_view potentiometer = "Potentiometer Calculator";
inline constexpr std::string_view sensitivity = "Volt/Volt Calculator";
inline constexpr std::string_view resistance = "Resistance Calculator";
inline constexpr std::string_view rpm = "RPM Calculator";
inline constexpr std::string_view flow = "Flow Calculator";
inline constexpr std::string_view speed = "Speed Calculator";
inline constexpr std::string_view moreSpeed = "More Speed Calculator";
}  // namespace title

namespace help {
inline constexpr std::string_view lowestX = "Enter the lowest sensor output.";
inline constexpr std::string_view highestX = "Enter the highest sensor output.";
inline constexpr std::string_view lowestY = "Enter the lowest units output.";
inline constexpr std::string_view highestY = "Enter the highest units output.";
inline constexpr std::string_view outputUnits = "Enter the output units desired.";
inline constexpr std::string_view probeX =
    "Shows the X value. If a value is entered, Y will be computed.";
inline constexpr std::string_view probeY =
    "Shows the Y value. If a value is entered, X will be computed.";

inline constexpr std::string_view fullScaleMvPerV =
    "Enter the mVolts/Volt full scale number from the sensor calibration sheet.";
inline constexpr std::string_view ratedCapacity =
    "Enter the Full Scale rated capacity from the sensor calibration sheet.";
inline constexpr std::string_view solveForThis = "Click to calculate for this unknown value.";
inline constexpr std::string_view transferred =
    "This value will be transferred back to the calling window.";

inline constexpr std::string_view resistor = "Enter the value of Rf in Ohms.";

inline constexpr std::string_view pulsesPerRevolution =
    "Enter the number of pulses per revolution from the sensor.";
inline constexpr std::string_view examplePulses =
    "Enter an example of pulses per second to see the result.";

inline constexpr std::string_view flowFactor = "Enter the calibration factor of the flow sensor.";
inline constexpr std::string_view pulsesPerGallon =
    "Click if the calibration factor is in Pulses per Gallon.";
inline constexpr std::string_view pulsesPerLiter =
    "Click if the calibration is in Pulses per Liter.";

inline constexpr std::string_view pulsesPerShaftTurn =
    "Enter the number of pulses per revolution of the shaft.";
inline constexpr std::string_view gearTurns =
    "Enter the turns of the gear box: revolutions in for one revolution out.";
inline constexpr std::string_view wheelSize =
    "Enter the circumference, diameter or radius of the wheel.";
inline constexpr std::string_view pulsesPerDistance =
    "Enter the number of pulses per kilometer or per mile.";
}  // namespace help

/// Captions beside the distance a pulse stands for, and pulses over a distance.
namespace caption {
inline constexpr std::string_view cmPerPulse = "cm/pulse";
inline constexpr std::string_view inchesPerPulse = "inches/pulse";
inline constexpr std::string_view pulsesPerKm = "pulses/km";
inline constexpr std::string_view pulsesPerMile = "pulses/mile";
}  // namespace caption

/// Title of the X-Y calculator for the block window that opens it.
std::string_view twoPointTitle(bool forFft);

/// What X is for a block: "Input mV", "Input V/V", "Counts" ...
std::string_view inputCaption(model::BlockKind kind, const model::MeasurementBlock& block);

}  // namespace calculators
