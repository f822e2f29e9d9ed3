// One running copy of the program a user session.
#pragma once

#include <memory>

class SingleInstance
{
public:
    // Takes the session-wide lock named "KOLM_Streaming_Assistant".
    SingleInstance();
    // A first copy holds the lock until its process ends, however it ends; a
    // later copy has let go of it before the constructor returned.
    ~SingleInstance();

    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    // False when another copy runs. True also when the lock could not be asked
    // for: a program that starts twice is better than one that never starts.
    bool isFirst() const { return first_; }

private:
    bool first_ = true;
};
