#include "form/frm_main.h"

#include "system/places.h"

namespace rivelt {

void frmMain::Form_Init() try {
  NL = Line_End;
  FSO = Create_Object();
  Transforms_Changed = false;
  Set_Log(u"");
  if (!Find_MSTS()) return;
  FSO->Set_Root(MSTS_Path);
  Recover_At_Start();  // also where the start then fails
  if (!Read_Routes()) return;
  if (!Read_Global()) return;
  for (const Text& line : Recovery_Lines) Add_Line(line);
  Recovery_Shown = true;
  Add_Line(NL + u"Select a route above for check/update");
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Could not load Rivelt!");
}

void frmMain::Lock() {
  if (Is_Locked()) return;
  Held_Lock.reset();
  Make_Folder(places::Quenby(MSTS_Path));
  Held_Lock = FSO->Lock(places::Quenby(MSTS_Path));
}

}  // namespace rivelt
