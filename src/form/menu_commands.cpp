#include "form/frm_main.h"
#include "form/reference_report.h"
#include "system/ignoring_failures.h"

namespace rivelt {

bool frmMain::Can_Choose(Menu_Entry entry) const {
  if (entry == Menu_Entry::Open_Installation) return true;
  if (entry == Menu_Entry::Reason) return !Last_Reason.empty();
  if (Stopped) return false;
  if (entry == Menu_Entry::Whole_Route) return true;
  if (entry == Menu_Entry::References || entry == Menu_Entry::To_Text) return Is_Route_Picked();
  if (entry == Menu_Entry::Restore) return !Restorable().empty();
  return false;
}

void frmMain::Choose(Menu_Entry entry, const Text& backup) {
  switch (entry) {
    case Menu_Entry::Whole_Route:
      Whole_Route = !Whole_Route;
      return;
    case Menu_Entry::References:
      return Show_References();
    case Menu_Entry::Restore:
      return Restore_From_Menu(backup);
    case Menu_Entry::To_Text:
      return Convert_From_Menu();
    case Menu_Entry::Reason:
      Form_Window.Message_Box(Last_Reason, Style_Information, std::nullopt);
      return;
    default:
      return;
  }
}

bool frmMain::Is_Route_Picked() const {
  bool is_picked = false;
  Ignoring_Failures([&] { is_picked = !Form_Window.Read_Text(Control::cmbRoutes).empty(); });
  return is_picked;
}

void frmMain::Show_References() try {
  Last_Reason.clear();
  Form_Window.Set_Pointer(Pointer::Hourglass);
  Set_Log(Reference_Report(References_Of(Picked_Route_Folder()), true));
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception& failure) {
  Report_Failure(failure, u"Could not read a file of the route!");
}

}  // namespace rivelt
