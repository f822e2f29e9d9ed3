#include "app/application_font.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QResource>
#include <QStringList>

namespace {

constexpr int fontPixelSize = 20;

// A font that is compiled in uncompressed is used where it lies: by its name,
// every thread that draws text would read a copy of its nine megabytes.
int addFont(const QString &path)
{
    const QResource resource(path);
    if (!resource.isValid() || resource.compressionAlgorithm() != QResource::NoCompression)
        return QFontDatabase::addApplicationFont(path);
    return QFontDatabase::addApplicationFontFromData(QByteArray::fromRawData(
        reinterpret_cast<const char *>(resource.data()), static_cast<int>(resource.size())));
}

} // namespace

void setApplicationFont(const QString &path)
{
    const int id = addFont(path);
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty())
        return;
    QFont font = QGuiApplication::font();
    font.setFamily(families.first());
    font.setPixelSize(fontPixelSize);
    QGuiApplication::setFont(font);
}
