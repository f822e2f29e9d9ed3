// What the simulated PC is asked for and simply knows: a line for each fact,
// with its key in a scenario, its kind, what it is without being mentioned, and
// what it means. The answers are in facts_sim.cpp; README.md ends with the table
// that simpc-seed --keys prints of these lines.
#pragma once

#include "simpc/fact.h"
#include "simpc/fact_kinds.h"

// A fact is a line.
class SimFacts : public FactTable
{
public:
    using FactTable::FactTable;

    Fact<QString> osVersion{this, "osVersion", kinds::text(), "10",
                            "product version of the system, `8.1` for example"};
    Fact<quint64> memoryBytes{this, "memoryBytes", kinds::wholeNumber<quint64>(), 17179869183,
                              "memory that the system can use, in bytes"};
    Fact<answers::Adapters> adapters{this, "adapters", kinds::adapters(), usual::adapters(),
                                     "graphics adapters in the system's order"};
    Fact<answers::DisplayDevices> displayDevices{this, "displayDrivers", kinds::displayDevices(),
                                                 usual::displayDevices(),
                                                 "drivers that the system has for them"};
    Fact<answers::Direct3D> direct3D{this, "direct3D", kinds::direct3D(),
                                     answers::Direct3D{0, 0xb000}, "what Direct3D reaches"};
    Fact<SimNetworkQuery> networkQuery{
        this, "networkQuery", kinds::networkQuery(), SimNetworkQuery::Answers,
        "how the question for `network` goes: `missing` if there is no such program"};
    Fact<SimCommands> commands{this, "commands", kinds::commands(), SimCommands(),
                               "console commands: name → what it prints; others do not exist"};
    Fact<answers::TcpTable> tcpTable{this, "tcpTable", kinds::tcpTable(), answers::TcpTable(),
                                     "how the question for the TCP ports goes"};
    Fact<answers::AcLine> acLine{this, changing("acLine", "power line"), kinds::acLine(),
                                 power::AcLine::Online,
                                 "power line; `fails` when the question fails"};
    Fact<QStringList> network{this, changing("network", "network"), kinds::texts(),
                              QStringList("Private"), "category of each network connection"};
    Fact<QStringList> recordingDevices{this, changing("recordingDevices", "recording devices"),
                                       kinds::texts(), QStringList(), "recording devices"};
    Fact<QString> installerSigner{this, "installerSigner", kinds::text(), "VB-Audio",
                                  "who has signed the installers on this PC; empty: nobody"};
    Fact<answers::WaveOuts> waveOuts{this, changing("waveOuts", "sound outputs"), kinds::waveOuts(),
                                     usual::waveOuts(), "sound outputs"};

    // The folders, joined by ':', in which a command interpreter looks for
    // programs. They are the real machine's; empty: it finds none. A scenario
    // says it with `adb`.
    Fact<QString> searchPath{this, "", kinds::text(), "", ""};
};
