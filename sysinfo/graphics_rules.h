// What the graphics adapters and Direct3D's answers mean. Pure.
#pragma once

#include "pc/feature_level.h"
#include "pc/graphics_adapters.h"

#include <QString>

#include <functional>
#include <vector>

namespace graphics_rules {

struct Graphics
{
    QString integrated; // name; empty if there is none
    QString discrete;   // name; empty if there is none
    QString vram;       // text of the discrete adapter's memory
};

// Which adapter counts as what, by their makers; of several of a kind the last
// one counts. The system's own software renderer is none.
Graphics classify(const std::vector<graphics_adapters::Adapter> &adapters);

// "8GB", "513M": the full units plus one.
QString videoMemoryText(quint64 bytes);

// The name of the highest Direct3D level that `probe` (feature_level::probe())
// reaches; a sentence when the system is too old for the question.
QString
directXText(const std::function<feature_level::Answer(const std::vector<quint32> &levels)> &probe);

} // namespace graphics_rules
