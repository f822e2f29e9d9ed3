#include "tests/support/translations.h"

#include <QFile>
#include <QXmlStreamReader>

std::vector<TranslationEntry> readTranslations(const QString &path)
{
    std::vector<TranslationEntry> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return entries;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            entries.push_back({context, xml.readElementText(), {}, {}});
        } else if (xml.name() == QLatin1String("translation")) {
            entries.back().type = xml.attributes().value(QLatin1String("type")).toString();
            entries.back().translation = xml.readElementText();
        }
    }
    return entries;
}
