#include "app/frm_main.h"

#include <utility>

namespace rivelt {

frmMain::frmMain(Window& window, Registry& registry, Create_File_System_Object create_object)
    : Form_Window(window), System_Registry(registry), Create_Object(std::move(create_object)) {}

void frmMain::Form_Init() try {
  NL = Line_End;
  FSO = Create_Object();
  Transforms_Changed = false;
  Set_Log(u"");
  if (!Find_MSTS()) return;
  FSO->Set_Root(MSTS_Path);
  if (!Read_Routes()) return;
  if (!Read_Global()) return;
  Recover_At_Start();
  Add_Line(NL + u"Select a route above for check/update");
} catch (const std::exception&) {
  Fatal_Error(u"Could not load Rivelt!");
}

}  // namespace rivelt
