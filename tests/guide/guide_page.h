// A page of the guide, as the tests look at it.
#pragma once

#include <QString>
#include <QStringList>

struct GuidePage
{
    QString error;       // why it could not be read; empty when it could
    QString language;    // of the document
    QString text;        // all that is read, each run of blanks as one
    QStringList program; // what the page says are words of the program: <b> and <q>
    QStringList outline; // identifiers of all sections, headings and entries, in order
    QStringList links;   // where they lead
    QStringList foreign; // what would be fetched from elsewhere
    QString style;
};

// Of a page that is written as XML is.
GuidePage readGuidePage(const QString &path);
