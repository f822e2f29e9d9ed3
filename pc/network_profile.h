// How to ask this PC for the category of its network connections.
#pragma once

#include <QString>
#include <QStringList>

namespace network_profile {

struct Query
{
    QString program;
    QStringList arguments;
};

// A program that prints one line a connection, with the category ("Public",
// "Private", ...) in it. It may take seconds: run it without waiting.
Query query();

} // namespace network_profile
