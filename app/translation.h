// The language of the user interface.
#pragma once

#include <QLocale>
#include <QString>

class QCoreApplication;

// The translation file for a system in `language`; empty when the interface is
// shown in its source language, Chinese. Pure, any thread.
QString translationFile(QLocale::Language language);

// Loads and installs the translation for `language`. The file is looked up in
// the working directory, which is the program's own folder normally. Without a
// usable file there is one warning and the interface stays Chinese. The
// translator belongs to `app`. GUI thread, before any text is translated.
void installTranslation(QLocale::Language language, QCoreApplication *app);
