#include "form/frm_main.h"

namespace rivelt {

bool frmMain::Can_Choose(Menu_Entry entry) const {
  if (entry == Menu_Entry::Open_Installation) return true;
  if (entry == Menu_Entry::Reason) return !Last_Reason.empty();
  if (Stopped) return false;
  if (entry == Menu_Entry::Whole_Route) return true;
  if (entry == Menu_Entry::Restore) return !Restorable().empty();
  return false;
}

void frmMain::Choose(Menu_Entry entry, const Text& backup) {
  switch (entry) {
    case Menu_Entry::Whole_Route:
      Whole_Route = !Whole_Route;
      return;
    case Menu_Entry::Restore:
      return Restore_From_Menu(backup);
    case Menu_Entry::Reason:
      Form_Window.Message_Box(Last_Reason, Style_Information, std::nullopt);
      return;
    default:
      return;
  }
}

}  // namespace rivelt
