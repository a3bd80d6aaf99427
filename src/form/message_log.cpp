#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "text/primitives.h"

namespace rivelt {
namespace {

constexpr Text_View Standard_Line = u"Rivelt needs to run on a computer with MSTS installed!";

}  // namespace

void frmMain::Add_Text(Text_View text) {
  Form_Window.Append_Log(text);
  Form_Window.Yield();
}

void frmMain::Add_Line(Text_View text) {
  Add_Text(Concatenate({text, NL}));
}

void frmMain::Set_Log(Text_View text) {
  Form_Window.Write_Log(text);
}

void frmMain::Fatal_Error(Text_View text) {
  using enum Control;
  Stopped = true;
  Set_Log(Concatenate({text, NL, Standard_Line}));
  for (const Control control : {cmbRoutes, optDynamic_0, optDynamic_1, Transform}) {
    Form_Window.Enable(control, false);
  }
  for (int row = 0; row < Row_Count; ++row) {
    Form_Window.Enable(txtTrack(row), false);
    Form_Window.Enable(cmbTracks(row), false);
  }
  for (const Control control : {cmdCheck, cmdUpdate, cmdSave}) Form_Window.Enable(control, false);
  // The log of a start that fails does not have them.
  Ignoring_Failures([&] {
    Text lines;
    for (const Text& line : Recovery_Lines) lines += line + NL;
    if (!Recovery_Shown) Last_Reason = lines + Last_Reason;
  });
}

void frmMain::Keep_Reason(const std::exception& failure) try {
  const auto* with_reason = dynamic_cast<const Failure*>(&failure);
  const Text reason = with_reason == nullptr ? u"not enough memory" : with_reason->Reason();
  // What fails after a fatal error is its consequence.
  if (!Stopped && !reason.empty()) Last_Reason = reason;
} catch (const std::exception&) {
  // There is no memory for the words.
}

void frmMain::Report_Failure(const std::exception& failure, Text_View message) {
  Keep_Reason(failure);
  Form_Window.Set_Pointer(Pointer::Default);
  Form_Window.Message_Box(message, Style_Critical, std::nullopt);
}

void frmMain::cmdSave_Click() try {
  Last_Reason.clear();
  Form_Window.Show_Save_Dialog();
  if (Form_Window.Save_File_Name().empty()) return;
  const auto stream = FSO->CreateTextFile(Form_Window.Save_File_Name(), true, false);
  stream->Write(Form_Window.Read_Text(Control::txtMessages));
  stream->Close();
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Form_Window.Message_Box(u"Could not save the log!", Style_Critical, std::nullopt);
}

}  // namespace rivelt
