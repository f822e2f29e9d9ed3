#include "peers/cloud_sim/request.h"

#include <QList>

namespace {

constexpr int longestHead = 1 << 16;

} // namespace

QByteArray Request::header(const QByteArray &name) const
{
    const QList<QByteArray> lines = head.split('\n');
    for (const QByteArray &line : lines) {
        const int colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).compare(name, Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

std::optional<Request> takeRequest(QByteArray *bytes, bool *isBad)
{
    const int end = bytes->indexOf("\r\n\r\n");
    *isBad = end < 0 && bytes->size() > longestHead;
    if (end < 0)
        return std::nullopt;
    Request request;
    request.head = bytes->left(end + 4);
    const QList<QByteArray> words = request.head.left(request.head.indexOf('\r')).split(' ');
    const QByteArray lengthText = request.header("Content-Length");
    bool ok = true;
    const int length = lengthText.isEmpty() ? 0 : lengthText.toInt(&ok);
    *isBad = words.size() != 3 || !ok || length < 0;
    if (*isBad || bytes->size() < request.head.size() + length)
        return std::nullopt;
    request.method = words[0];
    request.target = words[1];
    request.body = bytes->mid(request.head.size(), length);
    bytes->remove(0, request.head.size() + length);
    return request;
}
