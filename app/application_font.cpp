#include "app/application_font.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QStringList>

namespace {

constexpr int fontPixelSize = 20;

} // namespace

void setApplicationFont(const QString &path)
{
    const int id = QFontDatabase::addApplicationFont(path);
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (families.isEmpty())
        return;
    QFont font = QGuiApplication::font();
    font.setFamily(families.first());
    font.setPixelSize(fontPixelSize);
    QGuiApplication::setFont(font);
}
