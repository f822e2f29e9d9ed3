// Console commands whose output comes back through a pipe.
#pragma once

#include <QByteArray>

#include <memory>

// A command that was started, and the end of the pipe from which its standard
// output and standard error are read. Letting go of it closes the pipe and
// leaves the command alone. One thread.
class CommandPipe
{
public:
    enum Failure { None, NoPipe, NoProcess };

    // Starts a command line (8-bit text in the user's encoding) with its
    // window hidden, in the program's environment and folder.
    explicit CommandPipe(const QByteArray &commandLine);
    ~CommandPipe();

    Failure failure() const { return failure_; }

    // Waits for output and reads up to `size` bytes of it, which may be none at
    // all. Below 0 when nobody holds the other end any more.
    int read(char *data, int size);

private:
    struct Private;
    std::unique_ptr<Private> d;
    Failure failure_ = None;
};
