#include "pc/shared_cell.h"

#include "simpc/sim_cell.h"
#include "simpc/sim_pc.h"

// There is nothing to hold: the cell belongs to the simulated PC.
struct SharedCell::Handles
{
};

SharedCell::SharedCell() = default;

SharedCell::~SharedCell()
{
    destroy();
}

bool SharedCell::create()
{
    destroy();
    if (!SimPc::current().cell().isValid())
        return false;
    handles_ = std::make_unique<Handles>();
    return true;
}

std::optional<quint32> SharedCell::read(const GoesOn &goesOn) const
{
    quint32 value = 0;
    if (!handles_ || !SimPc::current().cell().read(&value, goesOn))
        return std::nullopt;
    return value;
}

bool SharedCell::write(quint32 value, const GoesOn &goesOn)
{
    SimPc &pc = SimPc::current();
    if (!handles_ || !pc.cell().write(value, goesOn))
        return false;
    // Written down last: who answers to the journal finds the cell as it says.
    pc.journal.add(QStringLiteral("cell write %1").arg(value));
    return true;
}

void SharedCell::destroy()
{
    handles_.reset();
}
