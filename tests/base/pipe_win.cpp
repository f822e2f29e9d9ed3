#include "tests/base/pipe.h"

#include <cstdlib>

#include <fcntl.h>
#include <io.h>

Pipe::Pipe()
{
    if (_pipe(ends_, 4096, _O_BINARY) != 0)
        std::abort();
}

Pipe::~Pipe()
{
    closeReadEnd();
    _close(ends_[1]);
}

QByteArray Pipe::read(int size)
{
    QByteArray bytes(size, '\0');
    const int got = _read(ends_[0], bytes.data(), static_cast<unsigned>(size));
    return got > 0 ? bytes.left(got) : QByteArray();
}

void Pipe::closeReadEnd()
{
    if (ends_[0] >= 0)
        _close(ends_[0]);
    ends_[0] = -1;
}
