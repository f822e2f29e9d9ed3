// A small simulated Windows PC: what the program can ask of and do to the
// machine it runs on, as a world with a state of its own.
//
// Tests describe a PC in code, let the program loose on it and look at what
// the world is like afterwards and in which order it was touched (journal).
// Demonstrations load it from a scenario file.
#pragma once

#include "simpc/sim_cell.h"
#include "simpc/sim_facts.h"
#include "simpc/sim_launches.h"
#include "simpc/sim_listener.h"
#include "simpc/sim_ports.h"
#include "simpc/sim_processes.h"
#include "simpc/sim_record.h"
#include "simpc/sim_registry.h"
#include "simpc/sim_timeline.h"
#include "simpc/sim_usb.h"

#include <memory>

// The parts of the world, and nothing but what connects them. All may be used
// from any thread; when things happen and who waits for whom is told in
// sim_timeline.h.
class SimPc
{
public:
    // Makes this PC the current one until it is destroyed; one at a time.
    explicit SimPc(Clock &clock, std::unique_ptr<SimCell> cell = std::make_unique<SimCell>());
    ~SimPc();

    SimPc(const SimPc &) = delete;
    SimPc &operator=(const SimPc &) = delete;

    // The PC that the program runs on. There must be one.
    static SimPc &current();
    static bool exists();

    SimTimeline timeline;
    // One line for everything that the program did to this PC, in the order in
    // which it did it ("launch ...", "terminate adb.exe", "cell write 0").
    // Questions are not written down.
    SimRecord journal;
    // What this PC did of its own accord ("Steam appears", "power line:
    // offline"), for those who watch a demonstration.
    SimRecord events{&timeline};
    SimFacts facts{&timeline};
    SimRegistry registry{timeline};
    SimProcesses processes{timeline};
    SimPorts ports{timeline}; // a process loses its own when it ends
    SimLaunches launches{timeline, journal};
    SimUsb usb{timeline};
    // What the person in front of the PC chooses in the program: USB (true) or
    // Wi-Fi.
    SimListener<bool> modeChoice{timeline};

    // The shared-memory cell of this PC.
    SimCell &cell() const;

private:
    const std::unique_ptr<SimCell> cell_;
};
