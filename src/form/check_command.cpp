#include "form/frm_main.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::cmdCheck_Click() try {
  Last_Reason.clear();
  const Text route = Form_Window.Read_Text(Control::cmbRoutes);
  if (route.empty()) {
    Set_Log(u"Please select a route I should check.");
    return;
  }
  Form_Window.Set_Pointer(Pointer::Hourglass);
  Set_Log(Concatenate({u"Checking: ", route, u", this will take some time", NL}));
  Do_Check();
  Report_Staged_Files();
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception& failure) {
  Report_Failure(failure, u"Had problems checking this route!");
}

void frmMain::Report_Staged_Files() {
  const Long count = FSO->GetFolder(places::Staging(MSTS_Path))->Files().Count();
  const Long databases = Staged_Databases().Count();
  if (count > 0 || databases > 0) {
    Add_Line(Concatenate({NL, Number_Text(count), u" updated files are in Quenby\\tmp"}));
    if (databases > 0) {
      Add_Line(
          Concatenate({Number_Text(databases), u" updated databases are in Quenby\\tmp\\route"}));
    }
    Add_Line(u"You may look them over before updating");
  } else {
    Add_Line(NL + u"No update needed");
  }
}

}  // namespace rivelt
