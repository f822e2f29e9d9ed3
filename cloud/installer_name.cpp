#include "cloud/installer_name.h"

#include <QUrl>

#include <algorithm>

namespace {

const QString otherwise = QStringLiteral("KOLM_Streaming_Assistant.exe");

// Leaves room for the folder in the 260 characters of a path of old.
constexpr int longestName = 120;
constexpr int longestSuffix = 10;

bool isPlain(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format: // would make a name look like another
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return !QStringLiteral("<>:\"/\\|?*").contains(c);
    }
}

// Windows does not keep these at the end of a name.
QString withoutEnds(QString name)
{
    const auto isEnd = [](QChar c) { return c.isSpace() || c == '.'; };
    while (!name.isEmpty() && isEnd(name.back()))
        name.chop(1);
    while (!name.isEmpty() && name.front().isSpace())
        name.remove(0, 1);
    return name;
}

// Windows opens a device under such a name, in whatever folder it is and
// whatever follows a dot.
bool isDevice(const QString &name)
{
    const QString stem = withoutEnds(name.section('.', 0, 0)).toUpper();
    for (const char *device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"}) {
        if (stem == QLatin1String(device))
            return true;
    }
    const bool isPort =
        stem.startsWith(QLatin1String("COM")) || stem.startsWith(QLatin1String("LPT"));
    // The superscript digits count as well.
    return isPort && stem.size() == 4 && stem.back().digitValue() >= 0;
}

// Keeps the suffix: it decides how the file is started.
QString shortened(const QString &name)
{
    if (name.size() <= longestName)
        return name;
    const int dot = name.lastIndexOf('.');
    const QString suffix =
        dot > 0 && name.size() - dot <= longestSuffix ? name.mid(dot) : QString();
    return withoutEnds(name.left(longestName - suffix.size())) + suffix;
}

} // namespace

QString installerName(const QUrl &address)
{
    const QString path = address.path(QUrl::FullyDecoded);
    // Decoding brings forth separators of both kinds.
    QString name = path.mid(std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
    for (QChar &c : name) {
        if (!isPlain(c))
            c = '_';
    }
    name = shortened(withoutEnds(name));
    if (name.isEmpty())
        return otherwise;
    return isDevice(name) ? shortened(QLatin1Char('_') + name) : name;
}
