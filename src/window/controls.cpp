#include "window/controls.h"

#include "text/primitives.h"
#include "text/utf8.h"

namespace rivelt {

Text Plain_Caption(Text_View caption) {
  return Replace_Text(caption, u"&", u"");
}

std::string Written_Name(const Control_Row& row) {
  const std::string name = To_Utf8(row.Name);
  return row.Index == Not_In_Array ? name : name + "(" + std::to_string(row.Index) + ")";
}

}  // namespace rivelt
