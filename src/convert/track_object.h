// A track object of a world file, as every pass reads it.

#pragma once

#include <functional>

#include "text/text.h"

namespace rivelt {

// A shape's id in the catalogue by its name, or -1.
using Id_Of_Shape = std::function<Long(Text_View name)>;

// All views are parts of the world file's text.
struct Track_Object {
  Text_View Record;   // from its keyword to its end, or to that of the text if nothing closes it
  Position Open = 0;  // of the "(" in the record that it begins with
  bool Is_Closed = false;

  // Whether it has all that follows, inside its brackets. Only a record that is closed can lack it.
  bool Is_Readable = false;
  Text_View Missing;  // which keyword or bracket it lacks, if that is why it cannot be read
  Text_View Id;       // what is between the brackets of "SectionIdx"
  Text_View Name;     // and of "FileName"
  Double Old_Id = 0;
  Text_View Old_Name;  // without the blanks at its ends

  // In the order of the text.
  Text_View First() const { return Id.data() < Name.data() ? Id : Name; }
  Text_View Second() const { return Id.data() < Name.data() ? Name : Id; }

  // Where the next one is looked for. A pass that deals with more or less of the text changes it.
  const char16_t* Next = nullptr;
};

// Hands over the track objects of a world file. Failure: one that cannot be read and has no end, or
// a number beyond the range of a Double. Some may have been handed over by then.
void Read_Track_Objects(Text_View text, const std::function<void(Track_Object&)>& take);

// Whether the catalogue gives its name the object's very number. A name counts without its
// quotation marks and folders too: the number is then no other shape's.
bool Is_Of_Catalogue(const Track_Object& object, const Id_Of_Shape& shape_id);

}  // namespace rivelt
