// What an item tells those who cannot see, and those without a mouse.
#pragma once

#include <QString>
#include <QVariant>

class QQuickItem;

// One of its Accessible properties, e.g. "checked".
QVariant accessible(QQuickItem *item, const char *property);
// Empty when it has none, and for null.
QString accessibleName(QQuickItem *item);

// Whether a ring is shown on the item, in it, or on what it is the inner part of.
bool hasRing(QQuickItem *item);
