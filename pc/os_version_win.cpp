#include "pc/os_version.h"

#include <QSysInfo>

namespace os_version {

QString product()
{
    return QSysInfo::productVersion();
}

} // namespace os_version
