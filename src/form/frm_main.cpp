#include "form/frm_main.h"

#include <utility>

namespace rivelt {

frmMain::frmMain(Window& window, Registry& registry, Create_File_System_Object create_object,
                 Open_Installation& installation)
    : Form_Window(window),
      System_Registry(registry),
      Create_Object(std::move(create_object)),
      Installed(installation) {
  Installed.Report = nullptr;
}

void frmMain::Form_Init() try {
  NL = Line_End;
  FSO = Create_Object();
  Transforms_Changed = false;
  Set_Log(u"");
  if (!Find_MSTS()) return;
  FSO->Set_Root(MSTS_Path);
  Installed.Recover_At_Start();  // also where the start then fails
  if (!Read_Routes()) return;
  if (!Read_Global()) return;
  Report_Recovery();
  Add_Line(NL + u"Select a route above for check/update");
} catch (const std::exception&) {
  Fatal_Error(u"Could not load Rivelt!");
}

void frmMain::Report_Recovery() {
  for (const Text& line : Installed.Recovery_Lines) Add_Line(line);
  Installed.Report = [this](Text_View line) { Add_Line(line); };
}

}  // namespace rivelt
