// The pages that the program opens in the browser.
#pragma once

#include <QLocale>
#include <QUrl>

namespace help_links {

QUrl steamDownload();
// The user guide in the language that is nearest to the system's.
QUrl userGuide(QLocale::Language systemLanguage);

} // namespace help_links
