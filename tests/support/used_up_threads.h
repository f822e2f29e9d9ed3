// A system that has no thread left for this process.
#pragma once

#include <memory>

// While it lives the system itself refuses every new thread, where it can be brought to
// (isSo()). What runs already runs on; meanwhile files of this process may be out of its
// reach. One at a time.
class UsedUpThreads
{
public:
    UsedUpThreads();
    ~UsedUpThreads();
    UsedUpThreads(const UsedUpThreads &) = delete;
    UsedUpThreads &operator=(const UsedUpThreads &) = delete;

    bool isSo() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
