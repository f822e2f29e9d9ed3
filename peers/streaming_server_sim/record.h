// The record of a run, for people and for tests that compare.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// One line for each thing, written at once: "> " sent, "< " received, "# " done.
// Control characters are written as \n, \r, \t and \xNN, a backslash as \\, so
// that a text never breaks the line. Without a path nothing is written; "-" is
// the standard output.
class Record
{
public:
    explicit Record(const QString &path);

    // False when the file cannot be written.
    bool isOpen() const { return path_.isEmpty() || file_.isOpen(); }

    void sent(const QByteArray &text) { line("> ", text); }
    void received(const QByteArray &text) { line("< ", text); }
    void did(const QString &text) { line("# ", text.toUtf8()); }

private:
    void line(const char *mark, const QByteArray &text);

    QString path_;
    QFile file_;
};
