// The images and the font, compiled into the program below ":/res/".
#pragma once

namespace res {

// Makes them known to Qt: a static library's resources are not found otherwise.
// Once, before the first use; calling it again does nothing.
void initResources();

} // namespace res
