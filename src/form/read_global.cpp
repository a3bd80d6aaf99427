#include "catalogue/catalogue_text.h"
#include "form/frm_main.h"
#include "system/places.h"
#include "text/primitives.h"

namespace rivelt {

bool frmMain::Read_Global() try {
  Add_Text(u"Reading global\\tsection.dat");
  const auto file = FSO->GetFile(places::Catalogue(MSTS_Path));
  Text text = file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  if (const auto version = Catalogue_Version(Trim_Text(text))) {
    Add_Text(Concatenate({u" version '", *version, u"'"}));
  }
  Add_Line(u"");
  text = Without_Comments(Trim_Text(text));
  Text_View rest = text;
  Reserved_Sections = Read_Count(rest, u"TrackSections");
  Reserved_Shapes = Read_Count(rest, u"TrackShapes");
  Read_Shapes(rest, [this](Long id, Text_View name) { Add_Shape(id, name); });
  Add_Line(u"Ids 102 - 105 are duplicates made by Kuju.");
  Add_Line(Number_Text(Reserved_Sections) + u" reserved track sections.");
  Add_Line(Concatenate({Number_Text(Reserved_Shapes), u" reserved track shapes, ",
                        Number_Text(Shape_Ids.Count()), u" used"}));
  return true;
} catch (const std::exception& failure) {
  Keep_Reason(failure);
  Fatal_Error(u"Could not read installed track sections!");
  return false;
}

}  // namespace rivelt
