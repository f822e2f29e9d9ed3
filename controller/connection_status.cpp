#include "controller/connection_status.h"

void ConnectionStatus::set(connection::State state, bool headsetFound)
{
    if (state == state_ && headsetFound == headsetFound_)
        return;
    state_ = state;
    headsetFound_ = headsetFound;
    emit changed();
}

void ConnectionStatus::setServerProgram(const QString &program)
{
    if (program == serverProgram_)
        return;
    serverProgram_ = program;
    emit serverProgramChanged();
}
