#include "controller/connection_status.h"

void ConnectionStatus::set(connection::State state, bool headsetFound)
{
    if (state == state_ && headsetFound == headsetFound_)
        return;
    state_ = state;
    headsetFound_ = headsetFound;
    emit changed();
}
