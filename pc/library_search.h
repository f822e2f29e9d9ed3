// Where libraries come from that are loaded by their name alone.
#pragma once

#include <QString>

namespace library_search {

// From now on only the program's own folder, `libraries` in it, and the system's are
// looked in, and no longer the working folder and the folders of the search path, in
// which others may write. First of all, before anything is loaded.
void trustOwnFoldersOnly(const QString &libraries);

} // namespace library_search
