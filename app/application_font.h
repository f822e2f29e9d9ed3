// The font of the user interface.
#pragma once

#include <QString>

// Makes the first family in the font file at `path` (a file or a resource) the
// application's font, 20 pixels high; everything else about the font stays. A
// font that cannot be loaded leaves the default in place. GUI thread.
void setApplicationFont(const QString &path);
