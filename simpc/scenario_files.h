// The files that a scenario wants to be there before the program starts.
#pragma once

#include "base/json_document.h"
#include "simpc/key_table.h"

#include <QByteArray>
#include <QString>

#include <vector>

struct ScenarioFile
{
    enum Place { Home, Work };
    Place place = Work;
    QString path; // relative to the place
    bool exists = true;
    QByteArray content;
};

namespace scenario {

// What the object `files` of the scenario file `whole` says.
std::vector<ScenarioFile> readFiles(ObjectReader files, const JsonDocument &whole);
// Its keys, for people.
KeyRows fileKeys();

// Writes the files below `home` and `work`, folders included, over whatever is
// there; files that are not to be there are removed, others are left alone. On
// failure says why in `error` and gives false; some files may be written then.
bool layOutFiles(const std::vector<ScenarioFile> &files, const QString &home, const QString &work,
                 QString *error);

} // namespace scenario
