#include <utility>

#include "catalogue/catalogue.h"
#include "form/frm_main.h"
#include "system/places.h"
#include "text/primitives.h"
#include "text/reasons.h"

namespace rivelt {

bool frmMain::Read_Global() try {
  Add_Text(u"Reading global\\tsection.dat");
  const auto file = FSO->GetFile(places::Catalogue(MSTS_Path));
  const Text content = file->OpenAsTextStream(For_Reading, Format_Unicode)->ReadAll();
  const Text_View text = Trim_Text(content);
  Naming_File(u"global\\tsection.dat", [&] {
    if (const auto version = Catalogue_Version(text)) {
      Add_Text(Concatenate({u" version '", *version, u"'"}));
    }
    Add_Line(u"");
    Catalogue catalogue =
        Read_Catalogue(text, [this](Long id, Text_View name) { Add_Shape(id, name); });
    Reserved_Sections = catalogue.Reserved_Sections;
    Reserved_Shapes = catalogue.Reserved_Shapes;
    Declared = std::move(catalogue.Declared);
  });
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
