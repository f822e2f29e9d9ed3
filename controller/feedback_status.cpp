#include "controller/feedback_status.h"

void FeedbackStatus::set(State state)
{
    if (state_ == state)
        return;
    state_ = state;
    emit changed();
}
