#include "form/frm_main.h"
#include "system/ignoring_failures.h"

namespace rivelt {
void frmMain::cmbRoutes_Click() {
  const bool route_selected = Is_Route_Picked();
  for (const Control control : {Control::cmdCheck, Control::cmdUpdate}) {
    Ignoring_Failures([&] { Form_Window.Enable(control, route_selected); });
  }
}

void frmMain::optDynamic_Click(int /*index*/) {
  bool all_sections = false;
  Ignoring_Failures([&] { all_sections = Form_Window.Read_Value(Control::optDynamic_1); });
  const auto enable = [&](Control control) {
    Ignoring_Failures([&] { Form_Window.Enable(control, all_sections); });
  };
  enable(Control::Transform);
  for (int row = 0; row < Row_Count; ++row) {
    enable(txtTrack(row));
    enable(cmbTracks(row));
  }
}

void frmMain::txtTrack_Change(int /*index*/) {
  Transforms_Changed = true;
}

void frmMain::cmbTracks_Click(int /*index*/) {
  Transforms_Changed = true;
}

void frmMain::cmdQuit_Click() {
  Form_Window.Unload();
}

}  // namespace rivelt
