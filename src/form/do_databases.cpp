#include <utility>

#include "convert/whole_route.h"
#include "form/frm_main.h"
#include "routes/trk_file.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Do_Databases() try {
  if (!Moves_Whole_Route()) return;
  const auto folder = FSO->GetFolder(places::Route(MSTS_Path, Current_Route_Folder()));
  const std::vector<Text> names = Database_Names(*folder);
  if (names.empty()) Add_Line(u"No track database: ");
  for (const Text& name : names) Convert_Database(name);
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Had problems reading the track database!");
}

void frmMain::Convert_Database(Text_View name) {
  const Text path = places::Below(places::Route(MSTS_Path, Current_Route_Folder()), name);
  const auto file = FSO->FindFile(path);
  if (!file) {
    if (name.ends_with(places::Database_Endings[0]))
      Add_Line(Concatenate({u"No track database: ", name}));
    return;
  }
  const File_State state = file->State();
  Text text = file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  Add_Line(Concatenate({NL, file->name()}));
  const Rebased_Database rebased =
      Rebase_Track_Database(std::move(text), Own, Section_Delta, Shape_Delta);
  Add_Line(Concatenate({Number_Text(rebased.Section_Count), u" section numbers,",
                        Number_Text(rebased.Shape_Count), u" shape numbers"}));
  if (rebased.Section_Count == 0 && rebased.Shape_Count == 0) return;
  Make_Folder(places::Staged_Databases(MSTS_Path));
  Stage(places::Below(places::Databases_Folder, file->name()), rebased.Output, state);
}

}  // namespace rivelt
