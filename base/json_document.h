// JSON documents that survive a round trip with every value.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QJsonValue>
#include <QString>

// A parsed JSON text. Numbers that a double might not give back with the same
// value (more than 15 significant digits, such as 64-bit ids, or an exponent
// out of range) are kept as they were written and come out again in
// toIndented(). In `document` such a number appears as a string that means
// nothing to anybody else; every other number is an ordinary one.
//
// Any thread; a value type.
struct JsonDocument
{
    QJsonDocument document;
    QJsonParseError error; // QJsonParseError::NoError when the text was JSON
    QByteArray numberMark; // internal: marks the kept numbers

    bool ok() const { return error.error == QJsonParseError::NoError; }

    // The text of a string of this document; empty for anything else, also
    // for a kept number.
    QString text(const QJsonValue &value) const;
};

// Reads `text` as JSON (UTF-8, with or without a byte order mark). An empty
// text is an error, and so is one whose top level is neither object nor array.
[[nodiscard]] JsonDocument parseJson(const QByteArray &text);

// `json` in the indented layout of QJsonDocument, UTF-8. Pass a document that
// was read with parseJson() and then edited.
[[nodiscard]] QByteArray toIndented(const JsonDocument &json);
