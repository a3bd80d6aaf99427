#include <utility>

#include "binary/binary_file.h"
#include "convert/whole_route.h"
#include "convert/world_passes.h"
#include "form/frm_main.h"
#include "system/ignoring_failures.h"
#include "system/places.h"
#include "text/letter_case.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {
namespace {

Text World_Text_Of_Binary(Text_View read, std::uint64_t file_size) {
  Text text = Text_Of_Binary(read, file_size);
  if (!Is_World_Text(text)) throw Failure(u"not a world file");
  return text;
}

}  // namespace

void frmMain::Do_World() try {
  const auto files = FSO->GetFolder(places::World(MSTS_Path, Current_Route_Folder()))->Files();
  for (const auto& file : files) {
    if (Is_World_File(file->name())) Convert_World_File(*file);
  }
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Had problems reading route w-files!");
}

void frmMain::Convert_World_File(File& file) {
  const Text name = file.name();
  Found.World_Files.insert(Fold_Case(name));
  const File_State state = file.State();
  Text text = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  Add_Line(Concatenate({NL, u"world\\", name}));
  const bool changes = Naming_File(places::Below(places::World_Folder, name), [&] {
    return (Is_World_Text(text) || Read_Binary_World(text, state)) && Run_World_Passes(text);
  });
  if (changes) Stage(name, text, state);
}

bool frmMain::Read_Binary_World(Text& text, const File_State& state) {
  ++Found.Binary_Files;
  if (Current.Whole_Route && (Numbers_Move() || !Current.Dynamic_Only)) {
    text = World_Text_Of_Binary(text, state.Size);
    Add_Line(u"file is binary, read as text");
    return true;
  }
  Add_Line(u"file is binary, please convert to text with ffedit");
  if (Shape_Delta == 0) return false;
  Ignoring_Failures([&] { Count_Objects_Behind(World_Text_Of_Binary(text, state.Size)); });
  return false;
}

bool frmMain::Run_World_Passes(Text& text) {
  const Log_Line log = [this](Text_View line) { Add_Line(line); };
  Long count = 0;
  if (Numbers_Move()) {
    Passed_World passed = Rebase_Dyntracks(text, Section_Delta, Shape_Delta, log);
    if (passed.Output) text = std::move(*passed.Output);
    count += passed.Count;
  }
  if (Shape_Delta != 0 && Current.Whole_Route) {
    count += Rebase_Track_Objects(text);
  } else if (Shape_Delta != 0) {
    Ignoring_Failures([&] { Count_Objects_Behind(text); });
  }
  if (!Current.Dynamic_Only) count += Check_Shapes(text);
  return count != 0;
}

void frmMain::Count_Objects_Behind(Text_View text) {
  Found.Objects_Behind += Renumber_Track_Objects(text).Shape_Count;
}

Renumbered_File frmMain::Renumber_Track_Objects(Text_View text) {
  const auto shape_id = [this](Text_View name) { return Shape_Id(name); };
  return Rebase_Own_Shapes(text, Moving_Shapes, shape_id, Purpose_Of_Check());
}

Long frmMain::Rebase_Track_Objects(Text& text) {
  Renumbered_File renumbered = Renumber_Track_Objects(text);
  Found.Taken += renumbered.Taken_Count;
  Found.Shared += renumbered.Shared_Count;
  if (renumbered.Output) text = std::move(*renumbered.Output);
  if (renumbered.Shape_Count != 0) {
    Add_Line(Number_Text(renumbered.Shape_Count) + u" track objects of the route's own shapes");
  }
  return renumbered.Shape_Count;
}

Long frmMain::Check_Shapes(Text& text) {
  const auto shape_id = [this](Text_View name) {
    const Long id = Shape_Id(name);
    if (id == -1) {
      ++Found.Unknown_Objects;
      Found.Unknown_Shapes.insert(Fold_Case(name));
    }
    return id;
  };
  const Shape_Tables tables{[this](Text_View name) { return Map_Shape(name); }, shape_id};
  Passed_World passed =
      Check_Track_Objects(text, tables, [this](Text_View line) { Add_Line(line); });
  if (passed.Output) text = std::move(*passed.Output);
  Found.Objects_Checked = true;
  Found.Corrected += passed.Corrected;
  Found.Left += passed.Left;
  return passed.Count;
}

}  // namespace rivelt
