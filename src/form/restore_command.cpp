#include <algorithm>

#include "backup/restore.h"
#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "text/primitives.h"

namespace rivelt {

namespace {

constexpr std::size_t Most_Restorable = 20;

}  // namespace

std::vector<Text> frmMain::Restorable() const {
  std::vector<Text> times;
  Ignoring_Failures([&] { times = Finished_Updates(Updates_Of(Picked_Route_Folder())); });
  std::ranges::reverse(times);
  if (times.size() > Most_Restorable) times.resize(Most_Restorable);
  return times;
}

void frmMain::Restore_From_Menu(const Text& time) try {
  Last_Reason.clear();
  if (Form_Window.Message_Box(u"Are you sure you want to restore this backup?",
                              Style_Question + Style_Ok_Cancel, u"Restore") != Answer_Ok) {
    return;
  }
  Form_Window.Set_Pointer(Pointer::Hourglass);
  Set_Log(Concatenate({u"Restoring: ", Form_Window.Read_Text(Control::cmbRoutes), NL}));
  const Restore_Result result = Restore(Picked_Route_Folder(), time);
  if (result.How != Change_End::Done) throw Failure();
  for (const auto* places : {&result.Files.Put_Back, &result.Files.Removed}) {
    for (const Text& place : *places) Add_Line(place);
  }
  for (const auto* places : {&result.Files.From_Later, &result.Files.Newer}) {
    for (const Text& place : *places) Add_Line(u"May be on other numbers: " + place);
  }
  Add_Line(u"Finished restoring ");
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Beep();
} catch (const std::exception& failure) {
  Report_Failure(failure, u"Had problems restoring this route!");
}

Restore_Result frmMain::Restore(const Text& route_folder, const Text& time) {
  Restore_Result result;
  result.How = Change_Route(route_folder,
                            [&] { Restore_Backup(Updates_Of(route_folder), time, result.Files); });
  return result;
}

}  // namespace rivelt
