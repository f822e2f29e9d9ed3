// A pipe of the system, and who reads from it.
#pragma once

#include <QByteArray>

// Both ends are open until they are closed or the object goes. Where the system raises
// a signal at a write without a reader, it is ignored from the first one on.
class Pipe
{
public:
    Pipe();
    ~Pipe();

    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;

    int writeEnd() const { return ends_[1]; }
    // Waits for bytes; so many at most.
    QByteArray read(int size);
    void closeReadEnd();

private:
    int ends_[2] = {-1, -1};
};
