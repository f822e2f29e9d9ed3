// The pages that the program opens in the browser.
#pragma once

#include <QLocale>
#include <QString>
#include <QUrl>

namespace help_links {

QUrl steamDownload();

// Where whoever ships the program keeps the user guide; an empty address is none.
struct GuideAddresses
{
    QString chinese;
    QString english;
};

// As the program was built.
GuideAddresses builtGuideAddresses();

// The user guide for a system in `systemLanguage`. Where an address is given for it, in
// Chinese or else in English, it is that one. Otherwise it is the page in the language of
// the program's texts that lies in `programFolder` (no slash at the end), or any other
// of the pages there, English first. Empty, after a warning, when there is none. Looks
// at the disk.
QUrl userGuide(QLocale::Language systemLanguage, const QString &programFolder,
               const GuideAddresses &addresses = builtGuideAddresses());

} // namespace help_links
