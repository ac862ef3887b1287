#pragma once

#include <array>
#include <string_view>

/// Texts of the main panel.
namespace control::panel {

/// One of the buttons, which are told apart by their index. Their mnemonics leave J, W and X to
/// the menus of a program around the panel.
struct Button {
  std::string_view caption;
  std::string_view help;
};

inline constexpr std::array<Button, 18> buttons = {{
    {"&Hardware", "Hardware configuration procedure for the Logger."},
    {"Scan &Interval", "Select the execution intervals for the Logger."},
    {"&Output Tables", "Set up the output intervals for the Logger."},
    {"&Thermocouple", "Set up thermocouple measurements to be made with the Logger."},
    {"&Voltage", "Set up voltage measurements to be made with the Logger."},
    {"Hi&gh Voltage", "Set up high voltage measurements to be made with the Logger."},
    {"Iso&lated", "Set up isolated voltage/thermocouple measurements to be made with the Logger."},
    {"&Bridge", "Set up bridge measurements to be made with the Logger."},
    {"&Filter / FFT", "Set up filter/FFT measurements to be made with the Logger."},
    {"P&ulse", "Set up pulse input measurements to be made with the Logger."},
    {"TC&MUX", "Set up TCMUX measurements."},
    {"CA&N Bus", "Set up Canbus items."},
    {"&Calculated", "Set up calculated fields."},
    {"&Ports", "Set up ports on the 7131 and 7141/42 modules."},
    {"Fl&ags", "Set up program flags."},
    {"&Excitation", "Set up 7131 excitation channels."},
    {"SAVE AND SEN&D", "Save the file and download to the data logger."},
    {"&SAVE", "Save the file for later downloading to the Logger."},
}};
inline constexpr std::size_t saveAndSendButton = 16;
inline constexpr std::size_t saveButton = 17;

namespace help {
inline constexpr std::string_view printOptions = "Press to see print options.";
inline constexpr std::string_view printWindow = "Press to print this window.";
inline constexpr std::string_view printSummary = "Press to send summary to the printer.";
inline constexpr std::string_view printSetup = "Press to set up the printer.";
inline constexpr std::string_view cancelPrint = "Press to cancel print.";
inline constexpr std::string_view extendedHelp = "Press for extended help.";
inline constexpr std::string_view quit = "Quit Program Generator.";
inline constexpr std::string_view operatorName = "Enter operator's name. Up to 30 characters.";
inline constexpr std::string_view idNumber = "Enter an appropriate ID number. Up to 30 characters.";
inline constexpr std::string_view summary =
    "Summary of program. Right column is measurement time only. Processing can take considerably "
    "longer.";
// The buttons that end a setup window.
inline constexpr std::string_view done = "Press to save changes and exit.";
inline constexpr std::string_view abandon = "Press to abandon changes and exit.";
inline constexpr std::string_view abandonTables = "Press to exit without saving changes.";
}  // namespace help

/// Longest operator and ID.
inline constexpr std::size_t longestIdentity = 30;

}  // namespace control::panel
