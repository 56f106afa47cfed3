#include "analysis/uniform_random.h"

namespace dovrex {

namespace {

// splitmix64: one add and a strong mix per value, so a reseed is as cheap as a draw.
std::uint64_t mix(std::uint64_t z) {
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15ull;

// The top 24 bits: every value is exact in a float and strictly below 1.
float toUnit(std::uint64_t bits) {
    return float(bits >> 40) * (1.0f / 16777216.0f);
}

}  // namespace

void UniformRandom::reseed(std::int32_t seed) {
    state_ = mix(std::uint64_t(std::int64_t(seed)));
}

float UniformRandom::next() {
    state_ += kStep;
    last_ = toUnit(mix(state_));
    return last_;
}

float UniformRandom::operator()(std::int32_t arg) {
    if (arg == 0) return last_;
    if (arg < 0) reseed(arg);
    return next();
}

float UniformRandom::firstAfter(std::int32_t seed) {
    UniformRandom r;
    r.reseed(seed);
    return r.next();
}

}  // namespace dovrex
