// Procedures that come and go on several threads while sound is rendered on another.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <thread>

#include "audio/bass.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

// What a procedure uses; destroyed, and so of no use to it, as soon as it was removed.
struct Workpiece {
    std::unique_ptr<std::atomic<int>> calls = std::make_unique<std::atomic<int>>(0);
    std::atomic<bool> gone{false};
};

void Work(HDSP, uint32_t, void* buffer, uint32_t length, void* user) {
    auto& piece = *static_cast<Workpiece*>(user);
    EXPECT_FALSE(piece.gone.load());
    ++*piece.calls;
    std::for_each_n(static_cast<float*>(buffer), length / sizeof(float), [](float& sample) { sample *= 0.5f; });
}

class EffectThreads : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(InitManualOutput(44100, true));
        path_ = folder_.Write("a.wav", WavBytes(Tone(44100, 1, 440.0, 1.0)));
        stream_ = Open();
    }
    void TearDown() override { BASS_Free(); }

    HSTREAM Open() const {
        const HSTREAM stream = BASS_StreamCreateFile(false, path_.c_str(), 0, 0, BASS_SAMPLE_FLOAT | BASS_SAMPLE_LOOP);
        BASS_ChannelPlay(stream, false);
        return stream;
    }

    // Sound is rendered until all `workers` are done.
    template <typename Worker>
    void RenderWhile(int workers, Worker worker) {
        std::atomic<int> left{workers};
        std::vector<std::thread> threads;
        for (int i = 0; i < workers; i++) {
            threads.emplace_back([&, i] {
                worker(i);
                left--;
            });
        }
        Samples out(480 * 2);
        while (left > 0) {
            RenderManually(out.data(), 480);
            for (const float sample : out) ASSERT_LE(std::fabs(sample), 1.0f);
        }
        for (std::thread& thread : threads) thread.join();
    }

    TemporaryFolder folder_;
    std::string path_;
    HSTREAM stream_ = 0;
};

}  // namespace

TEST_F(EffectThreads, AProcedureIsNeverCalledOnceItOrItsChannelIsGone) {
    RenderWhile(4, [&](int worker) {
        for (int round = 0; round < 100; round++) {
            Workpiece piece;
            const HSTREAM stream = worker < 2 ? stream_ : Open();
            const HDSP dsp = BASS_ChannelSetDSP(stream, Work, &piece, round % 3);
            ASSERT_NE(dsp, 0u);
            // Some are removed before, some while and some after they are first called.
            while (round % 3 == 1 && *piece.calls == 0) std::this_thread::yield();
            ASSERT_TRUE(stream == stream_ ? BASS_ChannelRemoveDSP(stream, dsp) : BASS_StreamFree(stream));
            piece.gone = true;
            piece.calls.reset();
        }
    });
}

}  // namespace hullrider
