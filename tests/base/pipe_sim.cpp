#include "tests/base/pipe.h"

#include <csignal>
#include <cstdlib>

#include <unistd.h>

Pipe::Pipe()
{
    std::signal(SIGPIPE, SIG_IGN);
    if (pipe(ends_) != 0)
        std::abort();
}

Pipe::~Pipe()
{
    closeReadEnd();
    close(ends_[1]);
}

QByteArray Pipe::read(int size)
{
    QByteArray bytes(size, '\0');
    const ssize_t got = ::read(ends_[0], bytes.data(), static_cast<size_t>(size));
    return got > 0 ? bytes.left(static_cast<int>(got)) : QByteArray();
}

void Pipe::closeReadEnd()
{
    if (ends_[0] >= 0)
        close(ends_[0]);
    ends_[0] = -1;
}
