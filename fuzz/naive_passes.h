// The passes over a route once more, as plainly as they can be said: the
// rest and the output are texts of their own, and every search walks the rest from its front. Slow,
// and therefore easy to trust.

#pragma once

#include "convert/rebase_tsection.h"
#include "convert/world_passes.h"

namespace rivelt::naive {

Rebased_Tsection Rebase_Tsection(Text rest, Long reserved_sections, Long reserved_shapes,
                                 const Log_Line& log);
Passed_World Rebase_Dyntracks(Text rest, Long section_delta, Long shape_delta, const Log_Line& log);
Passed_World Check_Track_Objects(Text rest, const Shape_Tables& tables, const Log_Line& log);

}  // namespace rivelt::naive
