// The pages, compiled into the program below "qrc:/qml/".
#pragma once

namespace qml {

// Makes them known to Qt: a static library's resources are not found otherwise.
// Once, before the first page is loaded; calling it again does nothing.
void initResources();

} // namespace qml
