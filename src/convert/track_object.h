// A track object of a world file, as every pass reads it.

#pragma once

#include <functional>
#include <variant>

#include "text/text.h"

namespace rivelt {

// An element of a record: a keyword, the first "(" after it, and the first ")" after that.
struct Element {
  Position Open = 0;
  Position Close = 0;
  Text_View Missing;  // which of the three is not in the text, if one is not
};

// Where one stretch of text ends and the next goes on. What lies between is written anew.
struct Track_Object {
  Element Id;
  Element Name;
  Double Old_Id = 0;
  Text_View Old_Name;

  bool Has_Name_First() const { return Name.Open < Id.Open; }
  const Element& First() const { return Has_Name_First() ? Name : Id; }
  const Element& Second() const { return Has_Name_First() ? Id : Name; }
};

struct Unreadable {
  Text_View Missing;  // what the record lacks; empty if it has all it needs
};

// Reads the record that is the whole text, or, if no ")" closes it, begins the text. Only a closed
// record is known to own what is found in it, so only there is a name before the id its own.
std::variant<Track_Object, Unreadable> Read_Track_Object(Text_View text, bool is_closed);

// What is between the brackets of an element.
Text_View Inside(Text_View record, const Element& element);

// Hands over the track objects of a world file, each with the record that its positions count in.
// One that cannot be read inside its brackets is passed over. Failure: one that cannot be read and
// has no end, or a number beyond the range of a Double.
void Read_Track_Objects(
    Text_View text, const std::function<void(Text_View record, const Track_Object& object)>& take);

// Whether the catalogue gives the name that very number. A name counts without its quotation marks
// and folders too: the number is then no other shape's.
bool Is_Of_Catalogue(Text_View name, Double number, const std::function<Long(Text_View)>& shape_id);

}  // namespace rivelt
