#include "peers/streaming_server_sim/cell.h"

#include "simpc/sim_cell.h"

struct Cell::Access
{
    SimCell cell;
};

Cell::Cell(const std::string &place) : access_(new Access{SimCell(QString::fromStdString(place))})
{
}

Cell::~Cell() = default;

bool Cell::sayUp()
{
    return access_->cell.write(1);
}
