// Where the numbers in a route's files lead: how an owner sees what an update has done to a route.

#pragma once

#include <array>
#include <map>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "convert/track_object.h"
#include "text/text.h"

namespace rivelt {

enum class Reference_Kind {
  Track_Object,
  Dynamic_Section,
  Dynamic_Shape,
  Path_Section,
  Database_Section,
  Database_Shape,
  Junction,
};

inline constexpr std::size_t Reference_Kinds = 7;

enum class Leads { To_Catalogue, To_Own, To_Nowhere };

struct Lost_Reference {
  Text File;
  Double Number = 0;
  bool operator==(const Lost_Reference&) const = default;
};

// The references of one kind.
struct Reference_Count {
  Long Of(Leads where) const { return Numbers[static_cast<std::size_t>(where)]; }

  std::array<Long, 3> Numbers = {};  // in the order of Leads
  std::vector<Lost_Reference> Lost;  // those that lead nowhere
};

// Track objects of one name that the catalogue does not have, and of one number.
struct Unknown_Shape {
  Text Name;  // as the first of them has it
  Double Number = 0;
  Long Objects = 0;
  Text First_File;
  Leads Where = Leads::To_Nowhere;
};

// Counts the references in the files of one route. A number that the route and the catalogue both
// declare is the route's own. A file is named as the lost references are to name it.
class Reference_Counter {
 public:
  Reference_Counter(Declared_Ids catalogue, Declared_Ids own, Id_Of_Shape shape_id)
      : Catalogue(std::move(catalogue)), Own(std::move(own)), Shape_Id(std::move(shape_id)) {}

  // Its track objects and dynamic tracks. A track object whose name the catalogue knows leads
  // there, whatever its number; any other one leads where its number does. A place in a dynamic
  // track that has no section is no reference. Failure: a text that the passes over world files
  // refuse; a part of it may have been counted.
  void Count_World_File(Text_View file, Text_View text);

  // The section ids that the local shapes refer to, as Rebase_Tsection gives them.
  void Count_Paths(Text_View file, const std::vector<Double>& path_sections);

  // A .tdb or .rdb. Failure: as for Read_Track_Database; a part of it may have been counted.
  void Count_Track_Database(Text_View file, Text_View text);

  const Reference_Count& Of(Reference_Kind kind) const {
    return Counts[static_cast<std::size_t>(kind)];
  }

  // In the order of their names, without regard to letter case, and then of their numbers.
  using Unknown_Shapes = std::map<std::pair<Text, Double>, Unknown_Shape>;
  const Unknown_Shapes& Unknown() const { return Unknown_By_Name; }

 private:
  void Count_Object(Text_View file, const Track_Object& object);
  void Count_Section(Reference_Kind kind, Text_View file, Double number);
  void Count_Shape(Reference_Kind kind, Text_View file, Double number);
  void Count(Reference_Kind kind, Text_View file, Double number, Leads where);

  Declared_Ids Catalogue;
  Declared_Ids Own;
  Id_Of_Shape Shape_Id;
  std::array<Reference_Count, Reference_Kinds> Counts;
  Unknown_Shapes Unknown_By_Name;
};

}  // namespace rivelt
