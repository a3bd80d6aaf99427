#pragma once

namespace rivelt {

// What the application object needs before the first window: the look of the controls, and that
// no dialog of the toolkit keeps settings on the disk.
void Prepare_Qt();

}  // namespace rivelt
