// What a network stream is cut into, and the pace at which it is played.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "audio/icy_cutter.h"
#include "audio/ogg_parts.h"
#include "audio/stream_buffer.h"
#include "audio/stream_pace.h"

namespace hullrider {

namespace {

std::string Numbers(size_t count) {
    std::string bytes;
    for (size_t i = 0; i < count; i++) bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

std::string TitleBlock(const std::string& title) {
    const size_t units = (title.size() + 15) / 16;
    return static_cast<char>(units) + title + std::string(units * 16 - title.size(), '\0');
}

std::string OggPage(unsigned char flags, const std::string& body) {
    std::string lacing(body.size() / 255, '\xFF');
    lacing += static_cast<char>(body.size() % 255);
    return std::string("OggS\0", 5) + static_cast<char>(flags) + std::string(20, 'x') +
           static_cast<char>(lacing.size()) + lacing + body;
}

std::string ReadAll(StreamBuffer& buffer) {
    std::string bytes;
    uint8_t piece[100];
    while (const size_t count = buffer.Read(piece, sizeof piece)) bytes.append(reinterpret_cast<char*>(piece), count);
    return bytes;
}

}  // namespace

TEST(IcyCutter, SoundAndTitlesComeApartWhereverTheNetworkCutsThem) {
    const std::string sound = Numbers(3000);
    const std::vector<std::string> titles = {"StreamTitle='One';", std::string(255 * 16, 't'), ""};
    for (const size_t interval : {size_t{1}, size_t{16}, size_t{1000}}) {
        std::string stream;
        for (size_t at = 0, i = 0; at < sound.size(); at += interval, i++) {
            stream += sound.substr(at, interval);
            if (at + interval <= sound.size()) stream += TitleBlock(titles[i % titles.size()]);
        }
        for (const size_t pieceBytes : {size_t{1}, size_t{7}, size_t{5000}, stream.size()}) {
            IcyCutter cutter(interval);
            std::string heard;
            std::vector<std::string> seen;
            for (size_t at = 0; at < stream.size(); at += pieceBytes) {
                cutter.Feed(
                    std::string_view(stream).substr(at, pieceBytes),
                    [&](std::string_view s) { return heard += s, true; },
                    [&](std::string_view t) { return seen.emplace_back(t), true; });
            }
            EXPECT_TRUE(heard == sound) << interval << " in pieces of " << pieceBytes;
            ASSERT_GE(seen.size(), 2u);
            EXPECT_EQ(seen[0], titles[0]);
            EXPECT_EQ(seen[1], titles[1]);
        }
    }
}

TEST(OggParts, APartBeginsWithTheFirstPagesOfItsStreams) {
    const std::string first = OggPage(2, "vorbis") + OggPage(2, "skeleton") + OggPage(0, Numbers(700)) + OggPage(4, "");
    const std::string second = OggPage(2, "opus") + OggPage(1, Numbers(255));
    for (const size_t pieceBytes : {size_t{1}, size_t{30}, size_t{10000}}) {
        OggParts parts;
        std::string all;
        std::vector<size_t> begins;
        const std::string stream = first + second + first;
        for (size_t at = 0; at < stream.size(); at += pieceBytes) {
            parts.Feed(
                std::string_view(stream).substr(at, pieceBytes), [&](std::string_view s) { return all += s, true; },
                [&] { begins.push_back(all.size()); });
        }
        EXPECT_TRUE(all == stream);
        EXPECT_EQ(begins, (std::vector<size_t>{first.size(), first.size() + second.size()})) << pieceBytes;
    }
}

TEST(OggParts, OtherStreamsPassUnchanged) {
    for (const std::string& stream :
         {Numbers(500), "Ogg" + Numbers(500), OggPage(2, "vorbis") + "junk" + Numbers(50)}) {
        OggParts parts;
        std::string all;
        for (const char byte : stream) {
            parts.Feed(
                std::string_view(&byte, 1), [&](std::string_view s) { return all += s, true; }, [] { FAIL(); });
        }
        EXPECT_TRUE(all == stream);
    }
}

TEST(StreamBuffer, ReadingStopsAtAJointAndTitlesWaitForTheirPlace) {
    StreamBuffer buffer;
    buffer.Append("abc");
    buffer.AddTitle("second");
    buffer.Append("def");
    buffer.AddJoint();
    buffer.AddJoint();  // nothing between them
    buffer.Append("ghi");
    buffer.AddJoint();
    buffer.End(0);
    EXPECT_EQ(ReadAll(buffer), "abcdef");
    EXPECT_EQ(buffer.TakeTitle(2), std::nullopt);
    EXPECT_EQ(buffer.TakeTitle(3), "second");
    EXPECT_EQ(buffer.TakeTitle(6), std::nullopt);
    EXPECT_TRUE(buffer.PassJoint());
    uint8_t byte = 0;
    EXPECT_EQ(buffer.Read(&byte, 1), 1u);
    EXPECT_EQ(byte, 'g');
    EXPECT_FALSE(buffer.IsOver());
    EXPECT_TRUE(buffer.PassJoint());  // drops the rest
    EXPECT_TRUE(buffer.IsOver());
    EXPECT_FALSE(buffer.PassJoint());
}

TEST(StreamBuffer, AFullOneHoldsItsReceiverUp) {
    StreamBuffer buffer;
    const std::string piece(100'000, 'x');
    std::thread receiver([&] {
        while (buffer.Append(piece)) buffer.AddTitle(std::string(4000, 't'));
    });
    uint8_t out[1000];
    for (int i = 0; i < 10'000; i++) EXPECT_LE(buffer.Read(out, sizeof out), sizeof out);
    EXPECT_LE(buffer.BytesAhead(), StreamBuffer::kMostBytes + piece.size());
    buffer.Cancel();
    receiver.join();
}

// An hour with a server whose clock is wrong: what is ahead stays in bounds, and the pitch moves by no more than a
// tenth of a semitone.
TEST(StreamPace, FollowsTheServersClock) {
    for (const double server : {0.995, 0.9999, 1.0, 1.0001, 1.005}) {
        for (const double burst : {1.5, 20.0}) {
            StreamPace pace;
            double ahead = burst, least = burst, most = burst, lastPace = 1.0;
            for (int second = 0; second < 3600; second++) {
                const double jitter = second % 2 == 0 ? 0.2 : -0.2;  // servers send in pieces
                lastPace = pace.Update(ahead + jitter, 1.0);
                ahead += server - lastPace;
                EXPECT_LE(std::fabs(lastPace - 1.0), 0.006 + 1e-9);
                least = std::min(least, ahead);
                most = std::max(most, ahead);
            }
            EXPECT_GT(least, burst > 10.0 ? 10.0 : 0.5) << server << " " << burst;
            EXPECT_LT(most, burst + 8.0) << server << " " << burst;
            EXPECT_NEAR(lastPace, server, 0.0015) << server << " " << burst;
        }
    }
}

}  // namespace hullrider
