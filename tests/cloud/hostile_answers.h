// Answers of a cloud that means us ill, or is out of its mind.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMetaType>

// What the log says of a batch.
enum Outcome { Silent, NotJson, Refused };
Q_DECLARE_METATYPE(Outcome)

// No installer may be longer.
inline constexpr qint64 longestInstaller = 8LL << 20;

// The answer whose body is `bytes`, with the members of `rest`.
QJsonObject body(const QByteArray &bytes, const QJsonObject &rest = {});
// 256 MiB of blanks, packed into one thousandth.
QByteArray bomb();

// Rows of an `answer` and its `outcome`: transfers that go wrong, and with them
// bodies that are no answer.
void addTransfers();
void addAnswers();
