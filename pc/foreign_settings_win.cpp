#include "pc/foreign_settings.h"

#include "pc/own_variables.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <array>

namespace foreign_settings {

bool isForeign(const QByteArray &name)
{
    // As the system does, letter case aside.
    const QByteArray upper = name.toUpper();
    constexpr std::array drawing{"QT_QUICK_BACKEND", "QSG_RENDER_LOOP", "QSG_INFO"};
    if (std::any_of(drawing.begin(), drawing.end(), [&](const char *own) { return upper == own; }))
        return false;
    constexpr std::array foreign{"QT_", "QML",      "QSG_",     "QV4_",
                                 "LC_", "LANGUAGE", "OPENSSL_", "SSL_CERT_"};
    return upper == "LANG" || std::any_of(foreign.begin(), foreign.end(), [&](const char *begin) {
               return upper.startsWith(begin);
           });
}

void ignore()
{
    const QStringList names = QProcessEnvironment::systemEnvironment().keys();
    for (const QString &name : names) {
        const QByteArray latin = name.toLatin1();
        if (isForeign(latin))
            own_variables::hide(latin.constData());
    }
}

} // namespace foreign_settings
