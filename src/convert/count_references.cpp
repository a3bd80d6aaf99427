#include "convert/count_references.h"

#include <cstddef>

#include "convert/read_dyntracks.h"
#include "convert/track_database.h"
#include "text/letter_case.h"

namespace rivelt {
namespace {

Reference_Kind Kind_Of(Database_Number::Kind kind) {
  switch (kind) {
    case Database_Number::Kind::Section:
      return Reference_Kind::Database_Section;
    case Database_Number::Kind::Shape:
      return Reference_Kind::Database_Shape;
    default:
      return Reference_Kind::Junction;
  }
}

Leads Where(Double number, const Number_Set& own, const Number_Set& of_catalogue) {
  if (own.Has(number)) return Leads::To_Own;
  return of_catalogue.Has(number) ? Leads::To_Catalogue : Leads::To_Nowhere;
}

}  // namespace

void Reference_Counter::Count_World_File(Text_View file, Text_View text) {
  Read_Track_Objects(text, [&](const Track_Object& object) {
    if (object.Is_Readable) Count_Object(file, object);
  });
  Read_Dyntracks(text, [&](const Dyntrack_Number& number) {
    if (number.Of == Dyntrack_Number::Kind::Shape) {
      Count_Shape(Reference_Kind::Dynamic_Shape, file, number.Value);
    } else if (number.Value != Unused_Section) {
      Count_Section(Reference_Kind::Dynamic_Section, file, number.Value);
    }
  });
}

void Reference_Counter::Count_Object(Text_View file, const Track_Object& object) {
  const bool is_known = Shape_Id(object.Old_Name) != -1;
  const Leads where = is_known || Is_Of_Catalogue(object, Shape_Id)
                          ? Leads::To_Catalogue
                          : Where(object.Old_Id, Own.Shapes, Catalogue.Shapes);
  Count(Reference_Kind::Track_Object, file, object.Old_Id, where);
  if (is_known) return;
  Unknown_Shape& shape = Unknown_By_Name[{Fold_Case(object.Old_Name), object.Old_Id}];
  if (shape.Objects++ > 0) return;
  shape.Name = object.Old_Name;
  shape.Number = object.Old_Id;
  shape.First_File = file;
  shape.Where = where;
}

void Reference_Counter::Count_Paths(Text_View file, const std::vector<Double>& path_sections) {
  for (const Double number : path_sections) {
    Count_Section(Reference_Kind::Path_Section, file, number);
  }
}

void Reference_Counter::Count_Track_Database(Text_View file, Text_View text) {
  Read_Track_Database(text, [&](const Database_Number& number) {
    const Reference_Kind kind = Kind_Of(number.Of);
    if (kind == Reference_Kind::Database_Section) {
      Count_Section(kind, file, number.Value);
    } else {
      Count_Shape(kind, file, number.Value);
    }
  });
}

void Reference_Counter::Count_Section(Reference_Kind kind, Text_View file, Double number) {
  Count(kind, file, number, Where(number, Own.Sections, Catalogue.Sections));
}

void Reference_Counter::Count_Shape(Reference_Kind kind, Text_View file, Double number) {
  Count(kind, file, number, Where(number, Own.Shapes, Catalogue.Shapes));
}

void Reference_Counter::Count(Reference_Kind kind, Text_View file, Double number, Leads where) {
  Reference_Count& count = Counts[static_cast<std::size_t>(kind)];
  ++count.Numbers[static_cast<std::size_t>(where)];
  if (where == Leads::To_Nowhere) count.Lost.push_back({Text(file), number});
}

}  // namespace rivelt
