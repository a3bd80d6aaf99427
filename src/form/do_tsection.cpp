#include "convert/rebase_tsection.h"
#include "form/frm_main.h"
#include "system/places.h"

namespace rivelt {

void frmMain::Do_Tsection() try {
  Section_Delta = 0;
  Shape_Delta = 0;
  Own = {};
  const auto file = FSO->GetFile(places::Local_Catalogue(MSTS_Path, Current_Route_Folder()));
  const File_State state = file->State();
  const Text text = file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  Add_Line(u"Local tsection.dat");
  const Rebased_Tsection rebased = Rebase_Tsection(text, Reserved_Sections, Reserved_Shapes,
                                                   [this](Text_View line) { Add_Line(line); });
  if (rebased.Moves()) Stage(places::Tsection, rebased.Output, state);
  // Not before: without the local file nothing else may move.
  Section_Delta = rebased.Section_Delta;
  Shape_Delta = rebased.Shape_Delta;
  Own = rebased.Moving();
} catch (const std::exception&) {
  Add_Line(u"No tsection.dat, seems like this route does not use dynamic tracks.");
}

}  // namespace rivelt
