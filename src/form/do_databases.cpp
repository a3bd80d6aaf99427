#include "binary/binary_file.h"
#include "convert/whole_route.h"
#include "form/frm_main.h"
#include "routes/trk_file.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {

void frmMain::Do_Databases() try {
  if (!Numbers_Move()) return;
  const auto files = Track_Databases(*FSO, places::Route(MSTS_Path, Current_Route_Folder()));
  if (Current.Whole_Route && files.empty()) {
    Keep_Reason(Failure(Concatenate({u"Routes\\", Current_Route_Folder(),
                                     u": its .trk names no .tdb that is there, and it has none or "
                                     u"several"})));
    return Fatal_Error(u"No track database!");
  }
  for (const auto& file : files)
    Current.Whole_Route ? Convert_Database(*file) : Count_In_Database(*file);
} catch (const std::exception& failure) {
  if (!Current.Whole_Route) return;
  Keep_Reason(failure);
  Fatal_Error(u"Had problems reading the track database!");
}

void frmMain::Convert_Database(File& file) {
  const File_State state = file.State();
  bool is_binary = false;
  const Renumbered_File renumbered = Renumber_Database(file, is_binary);
  Found.Taken += renumbered.Taken_Count;
  Add_Line(Concatenate({NL, file.name()}));
  if (is_binary) Add_Line(u"file is binary, read as text");
  Add_Line(Concatenate({Number_Text(renumbered.Section_Count), u" section numbers,",
                        Number_Text(renumbered.Shape_Count), u" shape numbers"}));
  if (!renumbered.Output) return;
  Make_Folder(places::Staged_Databases(MSTS_Path));
  Stage(places::Below(places::Databases_Folder, file.name()), *renumbered.Output, state);
}

void frmMain::Count_In_Database(File& file) try {
  bool is_binary = false;
  const Renumbered_File renumbered = Renumber_Database(file, is_binary);
  Found.Numbers_Behind += renumbered.Section_Count + renumbered.Shape_Count;
} catch (const std::exception&) {
  Add_Line(u"I cannot read the track database " + file.name());
}

Renumbered_File frmMain::Renumber_Database(File& file, bool& is_binary) const {
  Text text = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  is_binary = Is_Binary(text);
  return Naming_File(file.name(), [&] {
    if (is_binary) text = Text_Of_Binary(text, file.State().Size);
    return Rebase_Track_Database(text, Moving_Sections, Moving_Shapes, Purpose_Of_Check());
  });
}

}  // namespace rivelt
