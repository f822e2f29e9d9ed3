#include "peers/streaming_server_sim/record.h"

#include <cstdio>

namespace {

QByteArray visible(const QByteArray &text)
{
    QByteArray result;
    for (const char c : text) {
        if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '\t')
            result += "\\t";
        else if (c == '\\')
            result += "\\\\";
        else if (static_cast<unsigned char>(c) < 0x20)
            result += "\\x" + QByteArray(1, c).toHex();
        else
            result += c;
    }
    return result;
}

} // namespace

Record::Record(const QString &path) : path_(path)
{
    if (path_.isEmpty())
        return;
    if (path_ == QStringLiteral("-")) {
        file_.open(stdout, QIODevice::WriteOnly);
        return;
    }
    file_.setFileName(path_);
    file_.open(QIODevice::WriteOnly | QIODevice::Append);
}

void Record::line(const char *mark, const QByteArray &text)
{
    if (!file_.isOpen())
        return;
    file_.write(mark + visible(text) + '\n');
    file_.flush();
}
