#pragma once

#include <cstdint>

namespace dovrex {

// The program's uniform generator, used the way the old platform's one was: a call with a negative
// argument reseeds from that argument alone and returns the first value of the new stream, so the
// same negative argument always gives the same value whatever ran before. Values are single
// precision in [0, 1). Reseeding costs a few integer operations.
class UniformRandom {
  public:
    // arg < 0: reseed from arg, then draw; arg > 0: next value; arg == 0: the last value again.
    float operator()(std::int32_t arg = 1);
    void reseed(std::int32_t seed);
    float next();

    // The first value after reseeding with `seed`: a pure function of the seed.
    static float firstAfter(std::int32_t seed);

  private:
    std::uint64_t state_ = 0x9E3779B97F4A7C15ull;
    float last_ = 0.0f;
};

}  // namespace dovrex
