// The folder in which the installer of a newer version is kept.
#pragma once

#include <QString>

// Whether a file of that name is an installer, which is what is kept and started.
bool isInstallerName(const QString &name);

// Makes `folder` ready for the file `name`: creates it, and takes away every other
// installer, what is left of interrupted downloads, and a link of that name that
// leads nowhere: nothing is written to where it points. Other files stay; a folder
// that is a link itself is left as it is. Any thread.
void prepareDownloadFolder(const QString &folder, const QString &name);
