#include "form/frm_main.h"
#include "text/letter_case.h"
#include "text/primitives.h"

namespace rivelt {

void frmMain::Add_Shape(Long id, Text_View name) try {
  Shape_Ids.Add(id, name);
  for (int row = 0; row < Row_Count; ++row) Form_Window.Add_Item(cmbTracks(row), name);
} catch (const std::exception&) {
  const Long other = Shape_Ids.Look_Up(name);
  Add_Line(Concatenate(
      {u"Id ", Number_Text(id), u" duplicate shape ", name, u" same as id ", Number_Text(other)}));
}

Text frmMain::Map_Shape(Text_View name) try {
  const Text* new_name = Transforms.Find(name);
  if (new_name == nullptr) return Text(name);
  Found.Transformed_Shapes.insert(Fold_Case(name));
  Add_Line(Concatenate({u"Transforming ", name, u" >> ", *new_name}));
  return *new_name;
} catch (const std::exception&) {
  return Text(name);
}

Long frmMain::Shape_Id(Text_View name) try {
  const Long* id = Shape_Ids.Find(name);
  return id == nullptr ? -1 : *id;
} catch (const std::exception&) {
  return -1;
}

}  // namespace rivelt
