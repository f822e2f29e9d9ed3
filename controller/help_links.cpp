#include "controller/help_links.h"

namespace help_links {

QUrl steamDownload()
{
    return QUrl(QStringLiteral("https://store.steampowered.com/about/"));
}

QUrl userGuide(QLocale::Language systemLanguage)
{
    return QUrl(systemLanguage == QLocale::Chinese ? QStringLiteral(KOLM_GUIDE_URL_CHINESE)
                                                   : QStringLiteral(KOLM_GUIDE_URL_ENGLISH));
}

} // namespace help_links
