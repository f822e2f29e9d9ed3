// JSON documents that survive a round trip with every number intact.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonParseError>

// A parsed JSON text. Numbers that a JSON value could not give back unchanged
// (whole numbers beyond 64 bits signed, more digits than a double holds) are
// kept as they were written and come out again in toIndented(). In `document`
// such a number appears as a string that means nothing to anybody else; code
// that reads a number it knows gets an ordinary one.
//
// Any thread; a value type.
struct JsonDocument
{
    QJsonDocument document;
    QJsonParseError error; // QJsonParseError::NoError when the text was JSON
    QByteArray numberMark; // internal: marks the kept numbers

    bool ok() const { return error.error == QJsonParseError::NoError; }
};

// Reads `text` as JSON (UTF-8, with or without a byte order mark). An empty
// text is an error.
JsonDocument parseJson(const QByteArray &text);

// `json` in the indented layout of QJsonDocument, UTF-8. Pass a document that
// was read with parseJson() and then edited.
QByteArray toIndented(const JsonDocument &json);
