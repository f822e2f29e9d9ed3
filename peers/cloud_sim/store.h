// What the stand-in received, as files.
#pragma once

#include "peers/cloud_sim/request.h"

#include <QMap>
#include <QString>

// Request number N becomes N.head and N.body, four digits, in the order of
// arrival, in the folder or, for a tagged address, in the tag's folder below.
// When the head is there, the body is there whole.
class Store
{
public:
    explicit Store(const QString &folder) : folder_(folder) {}

    // Nothing is kept without a folder.
    void add(const QString &tag, const Request &request);

    // The tag's own answers; empty if it has none.
    QString answersFile(const QString &tag) const;

private:
    QString folder_;
    QMap<QString, int> counts_;
};
