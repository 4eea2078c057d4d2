#include "audio/synth_pool.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace hullrider {

namespace {

struct Pool {
    std::mutex mutex;
    std::unique_ptr<Synth> idle;
};

Pool& ThePool() {
    static auto* const pool = new Pool;  // never destroyed: decoder threads may outlive main
    return *pool;
}

std::unique_ptr<Synth> Exchange(std::unique_ptr<Synth> synth) {
    Pool& pool = ThePool();
    const std::lock_guard lock(pool.mutex);
    return std::exchange(pool.idle, std::move(synth));
}

bool AreSame(const FontList& a, const FontList& b) {
    const auto same = [](const FontEntry& x, const FontEntry& y) {
        return x.font->path == y.font->path && x.font->written == y.font->written && x.bank == y.bank;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

}  // namespace

std::unique_ptr<Synth> TakeSynth(uint32_t rate, const FontList& fonts) {
    std::unique_ptr<Synth> synth = Exchange(nullptr);
    if (synth && synth->Rate() == rate && AreSame(synth->Fonts(), fonts)) return synth;
    synth = std::make_unique<Synth>(rate);
    if (!synth->Good() || !synth->UseFonts(fonts)) return nullptr;
    return synth;
}

void GiveBackSynth(std::unique_ptr<Synth> synth) {
    if (!synth || !synth->HasFonts()) return;
    synth->Rest();
    Exchange(std::move(synth));
}

void DropIdleSynth() {
    Exchange(nullptr);
}

}  // namespace hullrider
