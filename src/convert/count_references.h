// Where the numbers in a route's files lead: how an owner sees what an update has done to a route.

#pragma once

#include <array>
#include <functional>
#include <vector>

#include "catalogue/catalogue_numbers.h"
#include "convert/rebase_tsection.h"
#include "text/number_set.h"
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

struct Lost_Reference {
  Text File;
  Double Number = 0;
  bool operator==(const Lost_Reference&) const = default;
};

// The references of one kind.
struct Reference_Count {
  Long To_Catalogue = 0;
  Long To_Own = 0;
  Long To_Nowhere = 0;
  std::vector<Lost_Reference> First_Lost;  // of those that lead nowhere, at most three

  Long Total() const { return To_Catalogue + To_Own + To_Nowhere; }
};

// Counts the references in the files of one route. A number that the route and the catalogue both
// declare is the route's own. A file is named as the lost references are to name it.
class Reference_Counter {
 public:
  // shape_id gives the catalogue's id for a shape's name, or -1.
  Reference_Counter(Catalogue_Numbers catalogue, Own_Numbers own,
                    std::function<Long(Text_View)> shape_id);

  // Its track objects and dynamic tracks. A track object whose name the catalogue knows leads
  // there, whatever its number; any other one leads where its number does. A place in a dynamic
  // track that has no section is no reference. Failure: a text that the passes over world files
  // refuse; a part of it may have been counted.
  void Count_World_File(Text_View file, Text_View text);

  // The section ids that the local shapes refer to, as Rebase_Tsection gives them.
  void Count_Paths(Text_View file, const std::vector<Double>& path_sections);

  // A .tdb or .rdb. Failure: as for Read_Track_Database; a part of it may have been counted.
  void Count_Track_Database(Text_View file, Text_View text);

  const Reference_Count& Of(Reference_Kind kind) const;

 private:
  void Count_Section(Reference_Kind kind, Text_View file, Double number);
  void Count_Shape(Reference_Kind kind, Text_View file, Double number);
  void Count(Reference_Kind kind, Text_View file, Double number, bool is_own, bool is_known);

  Catalogue_Numbers Catalogue;
  Own_Numbers Own;
  std::function<Long(Text_View)> Shape_Id;
  std::array<Reference_Count, Reference_Kinds> Counts;
};

}  // namespace rivelt
