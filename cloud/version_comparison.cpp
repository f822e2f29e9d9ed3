#include "cloud/version_comparison.h"

#include <QStringList>

#include <algorithm>

bool isNewerVersion(const QString &own, const QString &remote)
{
    QStringList left = own.split('.');
    const QStringList packaged = own.split('_');
    if (packaged.size() == 3)
        left = packaged[1].split('.') << packaged[2];
    const QStringList right = remote.split('.');
    const int common = std::min(left.size(), right.size());
    if (common < 3)
        return false;
    for (int i = 0; i < common; ++i) {
        const int l = left[i].toInt();
        const int r = right[i].toInt();
        if (l != r)
            return l < r;
    }
    return false;
}
