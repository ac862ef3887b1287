#pragma once

#include "ui/setup_window.h"

namespace ui {

/// The setup window of a button 0 to 15 of the main panel.
SetupWindow* makeWindow(int button, const WindowPorts& ports, QWidget* parent);

}  // namespace ui
