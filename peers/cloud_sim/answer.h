// What the stand-in cloud answers to a request.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>

struct Answer
{
    int status = 200;
    QList<QPair<QByteArray, QByteArray>> headers; // besides length and encoding
    QByteArray body;                              // see the README for what stands in braces
    qint64 size = -1;                             // a body of so many bytes of the pattern instead
    bool length = true;                           // says how long the body is
    bool chunked = false;                         // sends it in chunks
    int pieces = 1;                               // sends it in so many pieces
    int gap = 50;                                 // ms between two pieces
    qint64 cutAfter = -1; // closes the connection after so many bytes of the body
    bool silent = false;  // never answers
    bool endless = false; // begins anew at the end of the body
    QByteArray raw;       // the whole answer, head and all, instead
};

// Answers by service: "table", "version", "events", "upload", "installer". The
// first request to a service gets the first of its answers, and so on; the last
// one stays.
using Answers = QMap<QString, QList<Answer>>;

namespace answers {

// The compiled-in ones, in alphabetical order, and what each is for.
QStringList names();
QString title(const QString &name);

// The compiled-in answers of that name, or else those of a file. On failure
// `error` says why in a sentence; on success it is empty.
Answers load(const QString &nameOrPath, QString *error);

} // namespace answers
