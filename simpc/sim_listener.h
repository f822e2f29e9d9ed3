// Somebody who is told what happens to a simulated PC.
#pragma once

#include "simpc/sim_timeline.h"

#include <functional>
#include <utility>

// One at a time. Told as a change, on whichever thread notices; never any more
// once it was replaced or taken away. Any thread.
template <typename... What>
class SimListener
{
public:
    using Function = std::function<void(const What &...)>;

    explicit SimListener(const SimTimeline &timeline) : timeline_(timeline) {}

    // An empty function takes the listener away.
    void set(Function listener)
    {
        const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
        listener_ = std::move(listener);
    }
    void tell(const What &...what) const
    {
        const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
        if (listener_)
            listener_(what...);
    }

private:
    const SimTimeline &timeline_;
    Function listener_; // guarded by oneAtATime()
};
