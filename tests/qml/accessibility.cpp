#include "tests/qml/accessibility.h"

#include "tests/qml/interface.h"

#include <QQmlProperty>

namespace {

bool isShownRing(const QQuickItem *item)
{
    return item->objectName() == QLatin1String("focusRing") && item->isVisible();
}

} // namespace

QVariant accessible(QQuickItem *item, const char *property)
{
    return QQmlProperty::read(item, QStringLiteral("Accessible.") + QLatin1String(property),
                              qmlContext(item));
}

QString accessibleName(QQuickItem *item)
{
    return item ? accessible(item, "name").toString() : QString();
}

bool hasRing(QQuickItem *item)
{
    QList<QQuickItem *> rings = item ? Interface::shownItems(item) : QList<QQuickItem *>();
    for (const QQuickItem *around = item; around; around = around->parentItem())
        rings += around->childItems();
    return std::any_of(rings.cbegin(), rings.cend(), isShownRing);
}
