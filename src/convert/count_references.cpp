#include "convert/count_references.h"

#include <cstddef>
#include <utility>

#include "convert/read_dyntracks.h"
#include "convert/track_database.h"
#include "convert/track_object.h"

namespace rivelt {
namespace {

constexpr std::size_t Most_Lost = 3;

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

}  // namespace

Reference_Counter::Reference_Counter(Catalogue_Numbers catalogue, Own_Numbers own,
                                     std::function<Long(Text_View)> shape_id)
    : Catalogue(std::move(catalogue)), Own(std::move(own)), Shape_Id(std::move(shape_id)) {}

void Reference_Counter::Count_World_File(Text_View file, Text_View text) {
  Read_Track_Objects(text, [&](Text_View, const Track_Object& object) {
    if (Shape_Id(object.Old_Name) != -1 ||
        Is_Of_Catalogue(object.Old_Name, object.Old_Id, Shape_Id)) {
      Count(Reference_Kind::Track_Object, file, object.Old_Id, false, true);
    } else {
      Count_Shape(Reference_Kind::Track_Object, file, object.Old_Id);
    }
  });
  Read_Dyntracks(text, [&](const Dyntrack_Number& number) {
    if (number.Of == Dyntrack_Number::Kind::Shape) {
      Count_Shape(Reference_Kind::Dynamic_Shape, file, number.Value);
    } else if (number.Value != Unused_Section) {
      Count_Section(Reference_Kind::Dynamic_Section, file, number.Value);
    }
  });
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

const Reference_Count& Reference_Counter::Of(Reference_Kind kind) const {
  return Counts[static_cast<std::size_t>(kind)];
}

void Reference_Counter::Count_Section(Reference_Kind kind, Text_View file, Double number) {
  Count(kind, file, number, Own.Sections.Has(number), Catalogue.Sections.Has(number));
}

void Reference_Counter::Count_Shape(Reference_Kind kind, Text_View file, Double number) {
  Count(kind, file, number, Own.Shapes.Has(number), Catalogue.Shapes.Has(number));
}

void Reference_Counter::Count(Reference_Kind kind, Text_View file, Double number, bool is_own,
                              bool is_known) {
  Reference_Count& count = Counts[static_cast<std::size_t>(kind)];
  if (is_own) {
    ++count.To_Own;
  } else if (is_known) {
    ++count.To_Catalogue;
  } else {
    ++count.To_Nowhere;
    if (count.First_Lost.size() < Most_Lost) count.First_Lost.push_back({Text(file), number});
  }
}

}  // namespace rivelt
