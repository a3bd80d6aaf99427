#include "form/restore_command.h"

#include "text/primitives.h"

namespace rivelt {

void Restore_From_Menu(Window& window, Open_Installation& installation, const Text& time) try {
  if (window.Message_Box(u"Are you sure you want to restore this backup?",
                         Style_Question + Style_Ok_Cancel, u"Restore") != Answer_Ok) {
    return;
  }
  const Text route = window.Read_Text(Control::cmbRoutes);
  window.Set_Pointer(Pointer::Hourglass);
  window.Write_Log(Concatenate({u"Restoring: ", route, Line_End}));
  const Text folder = installation.Route_Folders.Look_Up(route);
  const Restore_Result result = installation.Restore(folder, time);
  if (result.How != Restore_Result::End::Done) throw Failure();
  for (const auto* places : {&result.Files.Put_Back, &result.Files.Removed}) {
    for (const Text& place : *places) window.Append_Log(Concatenate({place, Line_End}));
  }
  window.Append_Log(Concatenate({u"Finished restoring ", Line_End}));
  window.Set_Pointer(Pointer::Default);
  window.Beep();
} catch (const std::exception&) {
  window.Set_Pointer(Pointer::Default);
  window.Message_Box(u"Had problems restoring this route!", Style_Critical, std::nullopt);
}

}  // namespace rivelt
