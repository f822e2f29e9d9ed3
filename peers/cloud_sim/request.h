// One HTTP request as it arrives.
#pragma once

#include <QByteArray>

#include <optional>

struct Request
{
    QByteArray method;
    QByteArray target;
    QByteArray head; // the whole head with its last empty line
    QByteArray body;

    // The first header of that name, in whatever case; empty if there is none.
    QByteArray header(const QByteArray &name) const;
};

// Takes a whole request from the front of `bytes`; nothing while it is not
// whole. `isBad` is set for what will never be one.
std::optional<Request> takeRequest(QByteArray *bytes, bool *isBad);
