// How well one colour stands out from another.
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace contrast {

inline double channel(double value)
{
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

inline double luminance(const QColor &colour)
{
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
           0.0722 * channel(colour.blueF());
}

// 1 for two equal colours, 21 for black and white.
inline double between(const QColor &a, const QColor &b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

// What is seen of a colour that lets some of the one below through.
inline QColor over(const QColor &above, const QColor &below)
{
    const double alpha = above.alphaF();
    return QColor::fromRgbF(above.redF() * alpha + below.redF() * (1 - alpha),
                            above.greenF() * alpha + below.greenF() * (1 - alpha),
                            above.blueF() * alpha + below.blueF() * (1 - alpha));
}

} // namespace contrast
