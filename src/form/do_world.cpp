#include <utility>

#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "form/frm_main.h"
#include "system/places.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Do_World() try {
  Walked_World_Files.clear();
  const auto files = FSO->GetFolder(places::World(MSTS_Path, Current_Route_Folder()))->Files();
  for (const auto& file : files) {
    Walked_World_Files.insert(Fold_Case(file->name()));
    if (Is_World_File(file->name()) && !Convert_World_File(*file)) return;
  }
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Had problems reading route w-files!");
}

bool frmMain::Convert_World_File(File& file) {
  const Log_Line log = [this](Text_View line) { Add_Line(line); };
  const File_State state = file.State();
  Text output = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  Add_Line(Concatenate({NL, u"world\\", file.name()}));
  if (!Is_World_Text(output)) {
    Add_Line(u"file is binary, please convert to text with ffedit");
    if (!Moves_Whole_Route()) return true;
    Fatal_Error(u"A world file is binary, please convert it to text with ffedit!");
    return false;
  }
  Long dyntrack_count = 0;
  if (Numbers_Move()) {
    Passed_World passed = Rebase_Dyntracks(output, Section_Delta, Shape_Delta, log);
    output = std::move(passed.Output);
    dyntrack_count = passed.Count;
  }
  const auto shape_id = [this](Text_View name) { return Shape_Id(name); };
  Long change_count = 0;
  if (Current.Whole_Route && Shape_Delta != 0) {
    Passed_World passed = Rebase_Own_Shapes(std::move(output), Own, Shape_Delta, shape_id, log);
    output = std::move(passed.Output);
    change_count = passed.Count;
  }
  if (!Current.Dynamic_Only) {
    const Shape_Tables tables{[this](Text_View name) { return Map_Shape(name); }, shape_id};
    Passed_World passed = Check_Track_Objects(output, tables, log);
    output = std::move(passed.Output);
    change_count += passed.Count;
  }
  if (dyntrack_count != 0 || change_count != 0) Stage(file.name(), output, state);
  return true;
}

}  // namespace rivelt
