// How fast to play a network stream so that it neither runs dry nor piles up: the server's clock and the sound device's
// differ, usually by less than 0.01 %, in a bad case by half a percent. Pure.
#pragma once

namespace hullrider {

class StreamPace {
public:
    // `aheadSec`: sound that was received and not heard yet; `playedSec`: sound that was played since the last call.
    // Returns the pace, at most 0.6 % from 1: twice as fast would be 2.
    double Update(double aheadSec, double playedSec);

    // What is ahead has changed by a jump: measures again what is usual.
    void Reset();

private:
    double settledSec_ = 0.0;  // played since the last reset
    double aheadSec_ = 0.0;    // smoothed
    double wantedSec_ = 0.0;   // what is usual; 0 while it is being measured
};

}  // namespace hullrider
