#include "tests/guide/guide_page.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

class Reader
{
public:
    explicit Reader(QIODevice *device) : xml_(device) {}

    GuidePage read()
    {
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
            case QXmlStreamReader::StartElement:
                begin();
                break;
            case QXmlStreamReader::Characters:
                hear(xml_.text().toString());
                break;
            case QXmlStreamReader::EndElement:
                end();
                break;
            default:
                break;
            }
        }
        if (xml_.hasError())
            page_.error =
                QStringLiteral("line %1: %2").arg(xml_.lineNumber()).arg(xml_.errorString());
        page_.text = page_.text.simplified();
        return page_;
    }

private:
    bool isProgram() const
    {
        return xml_.name() == QLatin1String("b") || xml_.name() == QLatin1String("q");
    }

    void begin()
    {
        const QXmlStreamAttributes attributes = xml_.attributes();
        if (xml_.name() == QLatin1String("html"))
            page_.language = attributes.value(QLatin1String("lang")).toString();
        if (attributes.hasAttribute(QLatin1String("id")))
            page_.outline << xml_.name() + QLatin1Char('#') + attributes.value(QLatin1String("id"));
        if (attributes.hasAttribute(QLatin1String("href")))
            page_.links << attributes.value(QLatin1String("href")).toString();
        const QStringList fetching{"link", "script", "img", "iframe", "object", "embed", "base"};
        if (fetching.contains(xml_.name().toString()) ||
            attributes.hasAttribute(QLatin1String("src")))
            page_.foreign << xml_.name().toString();
        if (isProgram())
            words_.clear();
        inStyle_ = inStyle_ || xml_.name() == QLatin1String("style");
    }

    void hear(const QString &text)
    {
        (inStyle_ ? page_.style : page_.text) += text;
        words_ += text;
    }

    void end()
    {
        if (isProgram())
            page_.program << words_.simplified();
        inStyle_ = inStyle_ && xml_.name() != QLatin1String("style");
    }

    QXmlStreamReader xml_;
    GuidePage page_;
    QString words_;
    bool inStyle_ = false;
};

} // namespace

GuidePage readGuidePage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        GuidePage page;
        page.error = file.errorString();
        return page;
    }
    return Reader(&file).read();
}
