// The kinds of facts that are more than a text or a number.
#pragma once

#include "pc/audio_devices.h"
#include "pc/display_drivers.h"
#include "pc/feature_level.h"
#include "pc/graphics_adapters.h"
#include "pc/power.h"
#include "pc/tcp_table.h"
#include "simpc/value_kind.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>
#include <vector>

// How the system's query for the network category behaves.
enum class SimNetworkQuery {
    Answers,
    Missing, // there is no such program
    Hangs    // runs and never says anything
};

// Console commands: the first word of the command line, and the shell script
// that is run in the command's place.
using SimCommands = QMap<QString, QByteArray>;

// The answers to the questions, as pc/ has them. Nothing: the question fails.
namespace answers {

using Adapters = std::vector<graphics_adapters::Adapter>;
using DisplayDevices = std::optional<std::vector<display_drivers::Device>>;
using Direct3D = feature_level::Answer; // with the highest level that can be had
using TcpTable = tcp_table::Table;      // without its rows
using AcLine = std::optional<power::AcLine>;
using WaveOuts = std::vector<audio_devices::WaveOut>;

} // namespace answers

// A good card with a new driver, and two loudspeakers.
namespace usual {

answers::Adapters adapters();
answers::DisplayDevices displayDevices();
answers::WaveOuts waveOuts();

} // namespace usual

namespace kinds {

ValueKind<answers::Adapters> adapters();
ValueKind<answers::DisplayDevices> displayDevices();
ValueKind<answers::Direct3D> direct3D();
ValueKind<SimNetworkQuery> networkQuery();
ValueKind<SimCommands> commands();
ValueKind<answers::TcpTable> tcpTable();
ValueKind<answers::AcLine> acLine();
ValueKind<answers::WaveOuts> waveOuts();

} // namespace kinds
