#include "convert/rebase_tsection.h"
#include "form/frm_main.h"
#include "system/places.h"
#include "text/reasons.h"

namespace rivelt {

void frmMain::Do_Tsection() try {
  Section_Delta = 0;
  Shape_Delta = 0;
  Moving_Sections = {};
  Moving_Shapes = {};
  const auto file = FSO->FindFile(places::Local_Catalogue(MSTS_Path, Current_Route_Folder()));
  if (file) return Convert_Tsection(*file);
  Report_No_Tsection();
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  if (Current.Whole_Route) return Fatal_Error(u"Had problems reading the route's tsection.dat!");
  Report_No_Tsection();
}

void frmMain::Convert_Tsection(File& file) {
  const File_State state = file.State();
  const Text text = file.OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  Add_Line(u"Local tsection.dat");
  const Rebased_Tsection rebased =
      Naming_File(places::Below(Current_Route_Folder(), places::Tsection), [&] {
        return Rebase_Tsection(text, Reserved_Sections, Reserved_Shapes,
                               [this](Text_View line) { Add_Line(line); });
      });
  if (rebased.Section_Delta != 0 || rebased.Shape_Delta != 0) {
    Stage(places::Tsection, rebased.Output.value_or(text), state);
  }
  // Not before: without the local file nothing else may move.
  Moving_Sections = {rebased.Own.Sections, Declared.Sections, rebased.Section_Delta};
  Moving_Shapes = {rebased.Own.Shapes, Declared.Shapes, rebased.Shape_Delta};
  Section_Delta = rebased.Section_Delta;
  Shape_Delta = rebased.Shape_Delta;
}

void frmMain::Report_No_Tsection() {
  Add_Line(u"No tsection.dat, seems like this route does not use dynamic tracks.");
}

}  // namespace rivelt
