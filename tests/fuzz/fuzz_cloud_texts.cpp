// The two texts of the vendor cloud that are more than shown: the version and
// the address of the installer. Before the first NUL stands the one, behind it
// the other.
#include "cloud/installer_name.h"
#include "cloud/version_comparison.h"
#include "tests/fuzz/require.h"

#include <QString>
#include <QUrl>

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int end = bytes.indexOf('\0');
    const QString version = QString::fromUtf8(bytes.left(end < 0 ? bytes.size() : end));
    const QString address = QString::fromUtf8(end < 0 ? QByteArray() : bytes.mid(end + 1));

    // Nothing is newer than itself, and of two only one is.
    const QString own = QStringLiteral("1.2.30.400");
    REQUIRE(!isNewerVersion(version, version) || version.count('_') == 2);
    REQUIRE(!isNewerVersion(own, version) || version.contains('_') ||
            !isNewerVersion(version, own));

    const QString name = installerName(QUrl(address));
    REQUIRE(!name.isEmpty() && name.size() <= 120);
    REQUIRE(name != QStringLiteral(".") && name != QStringLiteral(".."));
    REQUIRE(!name.back().isSpace() && name.back() != '.' && !name.front().isSpace());
    REQUIRE(std::none_of(name.begin(), name.end(), [](QChar c) {
        return c < ' ' || QStringLiteral("<>:\"/\\|?*").contains(c);
    }));
    return 0;
}
