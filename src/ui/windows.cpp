#include "ui/windows.h"

#include <array>

#include "ui/frm_bridge_setup.h"
#include "ui/frm_calc_fields.h"
#include "ui/frm_can_bus.h"
#include "ui/frm_config.h"
#include "ui/frm_excite.h"
#include "ui/frm_exec_int.h"
#include "ui/frm_filt_setup.h"
#include "ui/frm_flags.h"
#include "ui/frm_hi_volt_setup.h"
#include "ui/frm_iso_setup.h"
#include "ui/frm_out_int.h"
#include "ui/frm_ports.h"
#include "ui/frm_pulse_setup.h"
#include "ui/frm_tc_setup.h"
#include "ui/frm_tcmux_setup.h"
#include "ui/frm_volt_setup.h"

namespace ui {
namespace {

using Maker = SetupWindow* (*)(const WindowPorts& ports, QWidget* parent);

template <class Window>
SetupWindow* make(const WindowPorts& ports, QWidget* parent) {
  return new Window(ports, parent);
}

/// By the index of the button.
constexpr std::array<Maker, 16> makers = {
    make<frmConfig>,     make<frmExecInt>,     make<frmOutInt>,     make<frmTCSetup>,
    make<frmVoltSetup>,  make<frmHiVoltSetup>, make<frmIsoSetup>,   make<frmBridgeSetup>,
    make<frmFiltSetup>,  make<frmPulseSetup>,  make<frmTCMUXSetup>, make<frmCanBus>,
    make<frmCalcFields>, make<frmPorts>,       make<frmFlags>,      make<frmExcite>,
};

}  // namespace

SetupWindow* makeWindow(int button, const WindowPorts& ports, QWidget* parent) {
  return makers.at(static_cast<std::size_t>(button))(ports, parent);
}

}  // namespace ui
